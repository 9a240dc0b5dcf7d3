// The caret between blocks where no line is: before a first table, between two rules.

import { boxOf, childrenOf, nameOf, typeOf } from './dom.js';
import { host } from './host.js';

const isFilling = (node) => typeOf(node) === 8 || (typeOf(node) === 3 && !/\S/.test(node.data)) || node === host;

/// The first child from an index on that a reader sees; null where none is.
export function nearestSeen(children, from, step) {
  let index = from;
  while (index >= 0 && index < children.length && isFilling(children[index])) index += step;
  return children[index] || null;
}

/// Whether a text or an element is part of a line.
export function isInLine(node) {
  if (!node) return false;
  if (typeOf(node) === 3) return !isFilling(node);
  return nameOf(node) === 'BR' || (nameOf(node) !== 'TABLE' && /^inline/.test(getComputedStyle(node).display));
}

/// Whether a position is between the blocks of an element, or at their edge.
export function isBetweenBlocks(node, offset) {
  if (typeOf(node) !== 1) return false;
  const children = childrenOf(node);
  const before = nearestSeen(children, offset - 1, -1), after = nearestSeen(children, offset, 1);
  return Boolean(before || after) && !isInLine(before) && !isInLine(after);
}

/// Where the caret lies across a gap: left, top and width; null where a position is none. The document puts a caret
/// between blocks only where no line is beside it.
export function gapBox(node, offset) {
  if (!isBetweenBlocks(node, offset)) return null;
  const children = childrenOf(node);
  const before = nearestSeen(children, offset - 1, -1), after = nearestSeen(children, offset, 1);
  const above = before && boxOf(before), below = after && boxOf(after);
  const left = Math.min(...[above, below].filter(Boolean).map((box) => box.left));
  const right = Math.max(...[above, below].filter(Boolean).map((box) => box.right));
  const top = above && below ? (above.bottom + below.top) / 2 : above ? above.bottom + 3 : below.top - 4;
  return { left, top: Math.max(top, 1), width: right - left };
}
