// Moves by a line in tables. The engine takes the cells of a row for lines one after the other. Who presses Down means
// the cell below, and below the last row what follows the table.

import { boxOf, caretAtPoint, closest, contains, elementOf, newRange, parentElementOf, nameOf, walk } from './dom.js';
import { beneath } from './host.js';
import { emptyBox } from './geometry.js';

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
  for (let i = 0; i < MOST_LINES && table.contains(selection.focusNode); ++i) {
    const { focusNode, focusOffset } = selection;
    selection.modify(alter, direction, 'line');
    if (selection.focusNode === focusNode && selection.focusOffset === focusOffset) break;
  }
  return !table.contains(selection.focusNode);
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

/// After a move by a line from a position: mends what it did to cells. `box` is the caret's before.
export function mendLineMove(node, offset, box, alter, direction) {
  const up = direction === 'backward';
  const x = goal && goal.node === node && goal.offset === offset ? goal.x : box ? box.left : 0;
  const selection = getSelection();
  for (let cell = cellOf(node); cell && !cell.contains(selection.focusNode);) {
    const next = cellBeyond(cell, x, up);
    if (next) return moveFocus(alter, positionIn(next, x, up), x);
    const table = closest(cell, 'table');
    if (!leaveTable(table, alter, direction)) return moveFocus(alter, [node, offset], x);
    cell = cellOf(table.parentElement);
  }
  const entered = tableEntered(node);
  const row = entered && entered.rows[up ? entered.rows.length - 1 : 0];
  const { cell } = row ? nearestCell(row, x, () => true) : {};
  if (cell && !cell.contains(selection.focusNode)) moveFocus(alter, positionIn(cell, x, up), x);
}
