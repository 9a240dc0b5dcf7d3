// The cell that the caret is in.

import { body, boxOf, clientHeightOf, clientLeftOf, clientTopOf, clientWidthOf, closest, elementOf, parentElementOf,
  root } from './dom.js';
import { cellFrame, hide, showBox } from './boxes.js';
import { host } from './host.js';
import { ids, state } from './state.js';

/// The innermost cell that holds all of the selected text, or the caret.
function currentCell() {
  const selection = getSelection();
  if (!state.editable || state.control || !selection.rangeCount) return null;
  const holder = selection.getRangeAt(0).commonAncestorContainer;
  const cell = closest(elementOf(holder) || host, 'td,th');
  return cell && ids.has(cell) ? cell : null;
}

/// What boxes that scroll by themselves leave to be seen of an element.
export function seenPart(element) {
  const box = boxOf(element);
  const part = { left: box.left, top: box.top, right: box.right, bottom: box.bottom };
  for (let outer = parentElementOf(element); outer && outer !== body(); outer = parentElementOf(outer)) {
    if (outer === root() || getComputedStyle(outer).overflowX === 'visible') continue;
    const limit = boxOf(outer);
    const left = limit.left + clientLeftOf(outer), top = limit.top + clientTopOf(outer);
    part.left = Math.max(part.left, left);
    part.top = Math.max(part.top, top);
    part.right = Math.min(part.right, left + clientWidthOf(outer));
    part.bottom = Math.min(part.bottom, top + clientHeightOf(outer));
  }
  return part.right > part.left && part.bottom > part.top ? { box, part } : null;
}

export function drawCell() {
  const cell = currentCell();
  const seen = cell && seenPart(cell);
  if (!seen) return hide(cellFrame);
  const { box, part } = seen;
  showBox(cellFrame, box.left, box.top, box.width, box.height);
  cellFrame.style.clipPath = `inset(${part.top - box.top}px ${box.right - part.right}px ` +
    `${box.bottom - part.bottom}px ${part.left - box.left}px)`;
}
