// Moves by a line. In tables the engine takes the cells of a row for lines one after the other. Who presses Down means
// the cell below, and below the last row what follows the table.

import { body, boxOf, boxesOf, caretAtPoint, childrenOf, closest, contains, elementOf, matches, nameOf,
  newRange, parentElementOf, parentOf, typeOf, walk } from './dom.js';
import { isBetweenBlocks, isInLine, nearestSeen } from './gap_caret.js';
import { beneath } from './host.js';
import { caretBox, emptyBox } from './geometry.js';
import { stepByLine } from './line_steps.js';
import { mouse } from './state.js';

const MOST_LINES = 1000;     // of one row, on the way out of a table
const MOST_ROWS_PASSED = 60;

let goal = null;  // where such a move has ended, and at which x it goes on: { node, offset, x }

/// The cell that a node stands in, or null.
export function cellOf(node) {
  const element = node && elementOf(node);
  return element && closest(element, 'td,th');
}

/// The cell of a row that is nearest to an x, among those that `fit`, and how far away it is.
export function nearestCell(row, x, fit) {
  let nearest = null, least = Infinity;
  for (const cell of row.cells) {
    const box = boxOf(cell);
    const away = Math.max(box.left - x, x - box.right, 0);
    if (away < least && fit(box)) [nearest, least] = [cell, away];
  }
  return { cell: nearest, away: least };
}

/// The cell over or under another at an x; where none is, the nearest in the next row. Cells of several rows
/// that stand beside it are neither.
export function cellBeyond(cell, x, up) {
  const rows = closest(cell, 'table').rows, step = up ? -1 : 1;
  const box = boxOf(cell);
  const fit = (other) => up ? other.bottom <= box.top + 1 : other.top >= box.bottom - 1;
  let second = null;
  for (let i = 1; i < MOST_ROWS_PASSED; ++i) {
    const row = rows[cell.parentElement.rowIndex + step * i];
    if (!row) break;
    const found = nearestCell(row, x, fit);
    if (found.away === 0) return found.cell;
    second = second || found.cell;
  }
  return second;
}

/// The middle of a cell's first line, or of its last.
function lineIn(cell, last) {
  const walker = walk(cell, NodeFilter.SHOW_TEXT);
  const range = newRange();
  let line = null;
  for (let text; (text = walker.nextNode());) {
    range.selectNodeContents(text);
    const rects = range.getClientRects();
    if (rects.length) line = rects[last ? rects.length - 1 : 0];
    if (line && !last) break;
  }
  const at = line || emptyBox(cell);
  return at.top + at.height / 2;
}

/// A position in a cell's first line, or its last, at an x: [node, offset].
function positionIn(cell, x, last) {
  const y = lineIn(cell, last);
  if (y < 0 || y > window.innerHeight) window.scrollBy(0, y - window.innerHeight / 2);
  const box = boxOf(cell);
  const within = Math.min(Math.max(x, box.left + 1), box.right - 1);
  const range = beneath(() => caretAtPoint(within, lineIn(cell, last)));
  return range && cell.contains(range.startContainer) ? [range.startContainer, range.startOffset] : [cell, 0];
}

function moveFocus(alter, [node, offset], x) {
  const selection = getSelection();
  if (alter === 'move') selection.collapse(node, offset);
  else selection.extend(node, offset);
  goal = { node: selection.focusNode, offset: selection.focusOffset, x };
}

/// Goes on by lines until the table is left. False where nothing lies beyond it.
function leaveTable(table, alter, direction) {
  const selection = getSelection();
  for (let i = 0; i < MOST_LINES && contains(table, selection.focusNode); ++i) {
    if (!stepByLine(alter, direction)) return false;
  }
  return !contains(table, selection.focusNode);
}

/// The outermost table around the focus that a move from `node` has come into.
function tableEntered(node) {
  let entered = null;
  const { focusNode } = getSelection();
  for (let element = cellOf(focusNode); element; element = parentElementOf(element)) {
    if (contains(element, node)) break;
    if (nameOf(element) === 'TABLE') entered = element;
  }
  return entered;
}

/// Where the last move by a line was to, and up to which press of the mouse that counts.
let lastMove = { x: 0, drawn: -1 };

/// The x that a move by a line goes down or up at. Between blocks the caret has none of its own: there it goes on.
function aim(node, offset) {
  if (goal && goal.node === node && goal.offset === offset) return goal.x;
  if (lastMove.drawn === mouse.drawn && isBetweenBlocks(node, offset)) return lastMove.x;
  const box = caretBox(node, offset);
  return box ? box.left : 0;
}

const indexOf = (child) => Array.prototype.indexOf.call(childrenOf(parentOf(child)), child);

/// A rule, or what isn't shown.
const isPassed = (node) => nameOf(node) === 'HR' || (typeOf(node) === 1 && boxesOf(node).length === 0);

/// What comes next after a position between blocks, or before it; null at the end of a cell or of all.
function beyond(node, offset, up) {
  const step = up ? -1 : 1;
  for (let from = up ? offset - 1 : offset;;) {
    const ahead = nearestSeen(childrenOf(node), from, step);
    if (ahead && !isPassed(ahead)) return ahead;
    if (!ahead && (node === body() || matches(node, 'td,th'))) return null;
    from = indexOf(ahead || node) + step;
    if (!ahead) node = parentElementOf(node);
  }
}

/// A position at an x in the line of a block that is next to where the caret comes from: [node, offset].
function edgeOf(block, x, up) {
  if (typeOf(block) === 3) return [block, up ? block.length : 0];
  if (isInLine(block)) return [parentOf(block), indexOf(block) + (up ? 1 : 0)];
  for (;;) {
    const row = nameOf(block) === 'TABLE' && block.rows[up ? block.rows.length - 1 : 0];
    const children = childrenOf(block);
    const inner = row ? nearestCell(row, x, () => true).cell
      : nearestSeen(children, up ? children.length - 1 : 0, up ? -1 : 1);
    if (!inner || isInLine(inner) || nameOf(inner) === 'HR') return positionIn(block, x, up);
    block = inner;
  }
}

/// Moves the focus by a line from a position where it stands. It stays where there is no further line.
export function moveByLine(node, offset, alter, direction) {
  const up = direction === 'backward';
  const x = aim(node, offset);
  lastMove = { x, drawn: mouse.drawn };
  const selection = getSelection();
  // The engine takes a position between blocks for one in the line beside it.
  const next = isBetweenBlocks(node, offset) && beyond(node, offset, up);
  if (next) return moveFocus(alter, edgeOf(next, x, up), x);
  const moved = stepByLine(alter, direction);
  for (let cell = cellOf(node); cell && !(moved && contains(cell, selection.focusNode));) {
    const below = cellBeyond(cell, x, up);
    if (below) return moveFocus(alter, positionIn(below, x, up), x);
    const table = closest(cell, 'table');
    if (!moved || !leaveTable(table, alter, direction)) return moveFocus(alter, [node, offset], x);
    cell = cellOf(parentElementOf(table));
  }
  if (!moved) return moveFocus(alter, [node, offset], x);
  const entered = tableEntered(node);
  const row = entered && entered.rows[up ? entered.rows.length - 1 : 0];
  const { cell } = row ? nearestCell(row, x, () => true) : {};
  if (cell && !contains(cell, selection.focusNode)) moveFocus(alter, positionIn(cell, x, up), x);
}
