// What stands in the window stays there while a long page is filled above it. The engine does that by itself as long as
// it keeps what it holds on to; it lets go of that when slots are filled anew.

import { caretAtPoint, contains, root } from './dom.js';
import { beneath } from './host.js';
import { caretBox } from './geometry.js';
import { takeOffShift } from './extent.js';
import { lengthOf } from './positions.js';

const MANY_OPERATIONS = 40;  // more than an edit of a line

/// Whether nodes come in before others.
function fills(list) {
  return list.length >= MANY_OPERATIONS && list.some((one) => one[3] && (one[0] === 'e' || one[0] === 't'));
}

const standsInWindow = (box) => box && box.top >= 0 && box.top < window.innerHeight;

/// A position in the window and its height there: the caret, or what is a third down. Null where nothing is to be held.
export function hold(list) {
  if (!fills(list) || window.scrollY <= 0) return null;
  const { focusNode: node, focusOffset: offset } = getSelection();
  const at = node && caretBox(node, offset);
  if (standsInWindow(at)) return { node, offset, top: at.top };
  const range = beneath(() => caretAtPoint(window.innerWidth / 2, window.innerHeight / 3));
  const box = range && caretBox(range.startContainer, range.startOffset);
  return standsInWindow(box) ? { node: range.startContainer, offset: range.startOffset, top: box.top } : null;
}

/// Scrolls to where the position stands at its height again.
export function keepHeld(held) {
  const stands = held && contains(root(), held.node);
  const box = stands && caretBox(held.node, Math.min(held.offset, lengthOf(held.node)));
  const way = box ? takeOffShift(box.top - held.top) : 0;
  if (Math.abs(way) >= 1) window.scrollBy({ top: way, behavior: 'instant' });
}
