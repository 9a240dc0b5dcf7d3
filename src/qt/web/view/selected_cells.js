// Cells that are selected: a selection that goes from one cell of a table into another.

import { boxOf, closest, contains, parentElementOf, removeAttribute, setAttribute } from './dom.js';
import { addBox } from './host.js';
import { lengthOf } from './positions.js';
import { selectedCells, showBox } from './boxes.js';
import { state } from './state.js';
import { cellOf } from './table_moves.js';

const tableOf = (cell) => (cell ? closest(cell, 'table') : null);

/// The cells at both ends that stand in one table, the innermost that holds all; null where they are one.
export function cornerCells(anchor, focus) {
  for (let first = cellOf(anchor); first; first = cellOf(parentElementOf(tableOf(first)))) {
    const table = tableOf(first);
    if (!table) return null;
    if (!contains(table, focus)) continue;
    let last = cellOf(focus);
    while (last && tableOf(last) !== table) last = cellOf(parentElementOf(tableOf(last)));
    return last && last !== first ? { table, first, last } : null;
  }
  return null;
}

const overlap = (a, b) => a.left < b.right - 1 && b.left < a.right - 1 && a.top < b.bottom - 1 && b.top < a.bottom - 1;

/// The least rectangle around two that cuts none of the boxes.
export function closedArea(first, last, boxes) {
  let area = { left: Math.min(first.left, last.left), top: Math.min(first.top, last.top),
    right: Math.max(first.right, last.right), bottom: Math.max(first.bottom, last.bottom) };
  for (let grown = true; grown;) {
    grown = false;
    for (const box of boxes) {
      if (!overlap(area, box)) continue;
      const next = { left: Math.min(area.left, box.left), top: Math.min(area.top, box.top),
        right: Math.max(area.right, box.right), bottom: Math.max(area.bottom, box.bottom) };
      grown = grown || next.left !== area.left || next.top !== area.top || next.right !== area.right ||
        next.bottom !== area.bottom;
      area = next;
    }
  }
  return area;
}

/// A triple press in the last paragraph of a cell: the engine goes on to the start of the next cell, which isn't meant.
export function keepInCell() {
  const selection = getSelection();
  const { anchorNode, anchorOffset, focusNode } = selection;
  const corners = selection.rangeCount ? cornerCells(anchorNode, focusNode) : null;
  if (corners) selection.setBaseAndExtent(anchorNode, anchorOffset, corners.first, lengthOf(corners.first));
}

const CELLS_MARK = 'tvx-cells';
let markedTable = null;

/// The text of a table whose cells are selected doesn't show as selected: between two cells of a column that is others'.
function markTable(table) {
  if (markedTable === table) return;
  if (markedTable) removeAttribute(markedTable, CELLS_MARK);
  if (table) setAttribute(table, CELLS_MARK, '');
  markedTable = table;
}

export function drawSelectedCells() {
  selectedCells.textContent = '';
  const selection = getSelection();
  const drawn = state.editable && !state.control && selection.rangeCount && !selection.isCollapsed;
  const corners = drawn ? cornerCells(selection.anchorNode, selection.focusNode) : null;
  markTable(corners && corners.table);
  if (!corners) return;
  const boxes = [];
  for (const row of corners.table.rows) for (const cell of row.cells) boxes.push(boxOf(cell));
  const area = closedArea(boxOf(corners.first), boxOf(corners.last), boxes);
  for (const box of boxes)
    if (overlap(area, box)) showBox(addBox('chosen', selectedCells), box.left, box.top, box.width, box.height);
}
