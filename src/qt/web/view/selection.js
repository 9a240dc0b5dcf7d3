// The selection, as the document sets it.

import { boxOf, elementOf, scrollIntoView } from './dom.js';
import { caretBox } from './geometry.js';
import { isBarHeld, leaveBar } from './extent.js';
import { factsLater } from './drawing.js';
import { lengthOf, selectionText } from './positions.js';
import { mouse, nodes, state } from './state.js';
import { restartBlink } from './boxes.js';

function setNative(anchorNode, anchorOffset, focusNode, focusOffset) {
  const selection = getSelection();
  anchorOffset = Math.min(anchorOffset, lengthOf(anchorNode));
  focusOffset = Math.min(focusOffset, lengthOf(focusNode));
  // Setting what is there would lose the column that Up and Down aim at.
  if (selection.anchorNode !== anchorNode || selection.anchorOffset !== anchorOffset ||
      selection.focusNode !== focusNode || selection.focusOffset !== focusOffset) {
    selection.setBaseAndExtent(anchorNode, anchorOffset, focusNode, focusOffset);
  }
}

export function select(type, anchor, anchorOffset, focus, focusOffset, selected, reveal, composing, mouseNumber) {
  // What the mouse has drawn since is still to be heard of; then the selection comes again. Under a menu that a right
  // press opened nobody hears of the release: it doesn't count.
  if (mouseNumber < mouse.drawn || (mouse.pressed && mouse.dragged)) return;
  state.control = type === 2 ? selected : 0;
  state.composed = composing.length ? { node: composing[0], start: composing[1], end: composing[2] } : null;
  const anchorNode = nodes.get(anchor), focusNode = nodes.get(focus);
  if (type !== 1 || !anchorNode || !focusNode) getSelection().removeAllRanges();
  else setNative(anchorNode, anchorOffset, focusNode, focusOffset);
  state.ownSelection = selectionText();
  restartBlink();
  if (reveal) revealFocus();
  factsLater();
}

/// The part of the window that no dialog covers: [top, bottom].
function openPart() {
  return [state.cover.top, window.innerHeight - state.cover.bottom];
}

function isInWindow(at) {
  const [top, bottom] = openPart();
  return at.top >= top && at.top + at.height <= bottom && at.left >= 0 && at.left <= window.innerWidth;
}

/// How far the window has to go for a caret's box: [right, down].
export function wayToReveal(at) {
  const margin = 4;
  const [top, bottom] = openPart();
  let down = 0, right = 0;
  if (at.top < top) down = at.top - top - margin;
  if (at.top + at.height > bottom) down = at.top + at.height - bottom + margin;
  if (at.left < 0) right = at.left - 20;
  if (at.left > window.innerWidth) right = at.left - window.innerWidth + 20;
  return [right, down];
}

export function revealFocus() {
  if (!isBarHeld()) leaveBar();
  const selection = getSelection();
  const [top, bottom] = openPart();
  const selected = state.control ? nodes.get(state.control) : null;
  if (selected) return scrollIntoView(selected, { block: 'nearest', inline: 'nearest' });
  if (!selection.rangeCount) return;
  let at = caretBox(selection.focusNode, selection.focusOffset);
  if (!at || isInWindow(at)) return;
  const element = elementOf(selection.focusNode);
  if (element && boxOf(element).height < (bottom - top) / 2) {
    scrollIntoView(element, { block: 'nearest' });
    at = caretBox(selection.focusNode, selection.focusOffset);
    if (!at || isInWindow(at)) return;
  }
  window.scrollBy(...wayToReveal(at));
}

let lastHeight = window.innerHeight;

/// A window that becomes lower, as where a bar opens below it, keeps the caret in sight that was in sight before.
export function keepInSight() {
  const before = lastHeight, selection = getSelection();
  lastHeight = window.innerHeight;
  if (lastHeight >= before || state.control || !selection.rangeCount) return;
  const at = caretBox(selection.focusNode, selection.focusOffset);
  if (at && at.top >= 0 && at.top + at.height <= before) revealFocus();
}
