// The caret between blocks where no line is: before a first table, between two rules.

import { boxOf, childrenOf, nameOf, typeOf } from './dom.js';
import { host } from './host.js';

const isFilling = (node) => typeOf(node) === 8 || (typeOf(node) === 3 && !/\S/.test(node.data)) || node === host;

/// A block that no caret stands at the edge of.
function isClosed(node) {
  if (typeOf(node) !== 1) return false;
  if (nameOf(node) === 'TABLE' || nameOf(node) === 'HR') return true;
  return node.isContentEditable === false && !/^inline/.test(getComputedStyle(node).display);
}

function nearestSeen(children, from, step) {
  let index = from;
  while (index >= 0 && index < children.length && isFilling(children[index])) index += step;
  return children[index] || null;
}

/// Where the caret lies across a gap: left, top and width; null where a position is none. The document knows by the
/// same rule where such places are.
export function gapBox(node, offset) {
  if (typeOf(node) !== 1) return null;
  const children = childrenOf(node);
  const before = nearestSeen(children, offset - 1, -1), after = nearestSeen(children, offset, 1);
  if ((before && !isClosed(before)) || (after && !isClosed(after)) || (!before && !after)) return null;
  const above = before && boxOf(before), below = after && boxOf(after);
  const left = Math.min(...[above, below].filter(Boolean).map((box) => box.left));
  const right = Math.max(...[above, below].filter(Boolean).map((box) => box.right));
  const top = above && below ? (above.bottom + below.top) / 2 : above ? above.bottom + 3 : below.top - 4;
  return { left, top: Math.max(top, 1), width: right - left };
}
