// One step by a line, as the engine takes it, past the edges of rules and tables, which it takes for lines.

import { body, childrenOf, contains, nameOf, typeOf } from './dom.js';
import { isInLine, nearestSeen } from './gap_caret.js';

const MOST_STEPS = 1000;

const isStop = (node) => Boolean(node) && (nameOf(node) === 'HR' || nameOf(node) === 'TABLE');

/// Whether a move has ended at a rule's or a table's edge, not in a line.
function isAtEdge({ focusNode, focusOffset }, forward) {
  if (typeOf(focusNode) !== 1) return false;
  if (nameOf(focusNode) === 'HR') return true;
  const children = childrenOf(focusNode);
  const before = nearestSeen(children, focusOffset - 1, -1), after = nearestSeen(children, focusOffset, 1);
  const ahead = forward ? after : before, back = forward ? before : after;
  // A position beside a text would be in the text.
  if (isStop(ahead)) return !isInLine(back) || typeOf(back) === 3 || nameOf(back) === 'BR';
  return isStop(back) && !isInLine(ahead);
}

/// False where there is no further line; then the focus is anywhere.
export function stepByLine(alter, direction) {
  const selection = getSelection();
  for (let i = 0, stayed = 0; i < MOST_STEPS && stayed < 2; ++i) {
    const { focusNode, focusOffset } = selection;
    selection.modify(alter, direction, 'line');
    // From the last line Chromium goes on after the body.
    if (body() && !contains(body(), selection.focusNode)) return false;
    // After a rule and before the next is one position, but two steps.
    if (selection.focusNode === focusNode && selection.focusOffset === focusOffset) ++stayed;
    else if (!isAtEdge(selection, direction === 'forward')) return true;
  }
  return false;
}
