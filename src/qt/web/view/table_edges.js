// Where the mouse takes hold of a table: its own edges, and those between its columns.

import { boxOf, closest, elementAtPoint, findAll, getAttribute, nameOf, removeAttribute, setAttribute,
  styleOf } from './dom.js';
import { beneath } from './host.js';
import { edgeAt } from './wholes.js';
import { ids } from './state.js';
import { px } from './geometry.js';

const NEAR_EDGE = 4;       // beside an edge
const CORNER = 9;          // along both edges from a table's corner
const MOST_ROWS = 300;     // looked at for cells at an edge

function isRightToLeft(table) {
  return getComputedStyle(table).direction === 'rtl';
}

function spacingOf(table) {
  const style = getComputedStyle(table);
  return style.borderCollapse === 'collapse' ? 0 : px(style.borderSpacing);
}

/// How far into a cell its edge reaches: over border and padding, where no text is pressed.
function gripOf(cell, side) {
  const style = getComputedStyle(cell);
  return Math.max(2, Math.min(NEAR_EDGE, px(style['padding' + side]) + px(style['border' + side + 'Width'])));
}

/// Whether a column stands after that side of a cell.
function hasColumnAfter(table, box, toRight) {
  const whole = boxOf(table);
  const room = toRight ? whole.right - box.right : box.left - whole.left;
  return room > spacingOf(table) + px(getComputedStyle(table).borderLeftWidth) + NEAR_EDGE;
}

/// The side of a cell that a point is near to, if a column stands after it: the cell, and whether its right
/// edge is meant or its left one.
export function sideAt(cell, x, y) {
  const table = closest(cell, 'table');
  const box = boxOf(cell);
  if (!table || !ids.has(cell) || !ids.has(table) || y < box.top || y > box.bottom) return null;
  const isNear = (distance, side) => distance <= NEAR_EDGE && distance >= -gripOf(cell, side);
  const toRight = isNear(x - box.right, 'Right');
  if (!toRight && !isNear(box.left - x, 'Left')) return null;
  return hasColumnAfter(table, box, toRight) ? { cell, table, toRight } : null;
}

/// The edge between two columns at a point. Between two cells that stand apart their table is at the point.
function columnEdgeAt(x, y) {
  return beneath(() => {
    const cellAt = (x) => {
      const hit = elementAtPoint(x, y);
      return hit && closest(hit, 'td,th,table');
    };
    const here = cellAt(x);
    if (!here) return null;
    if (here.nodeName !== 'TABLE') return sideAt(here, x, y);
    for (const way of [-NEAR_EDGE, NEAR_EDGE]) {
      const cell = cellAt(x + way);
      const edge = cell && cell.nodeName !== 'TABLE' && sideAt(cell, x, y);
      if (edge) return edge;
    }
    return null;
  });
}

/// The cells that end and start at an edge, those that fill the fewest columns: { before, after } in the
/// table's direction. Null where there is no edge from above to below.
export function cellsAtEdge({ cell, table, toRight }) {
  const box = boxOf(cell), spacing = spacingOf(table);
  const left = toRight ? box.right : box.left - spacing;  // where the cells to the left of it end
  const found = { left: null, right: null };
  const note = (side, one) => {
    if (!found[side] || one.colSpan < found[side].colSpan) found[side] = one;
  };
  const from = Math.max(0, cell.parentElement.rowIndex - MOST_ROWS / 2);
  for (const row of Array.prototype.slice.call(table.rows, from, from + MOST_ROWS)) {
    for (const one of row.cells) {
      const at = boxOf(one);
      if (Math.abs(at.right - left) < 1) note('left', one);
      if (Math.abs(at.left - spacing - left) < 1) note('right', one);
    }
    if (found.left && found.right && found.left.colSpan === 1 && found.right.colSpan === 1) break;
  }
  if (!found.left || !found.right) return null;
  return isRightToLeft(table) ? { before: found.right, after: found.left, x: left + spacing / 2 }
    : { before: found.left, after: found.right, x: left + spacing / 2 };
}

/// What `width` leaves out of a cell's box: its padding, and as much of its border as it has for itself.
function extraWidth(cell) {
  const style = getComputedStyle(cell);
  if (style.boxSizing === 'border-box') return 0;
  return px(style.paddingLeft) + px(style.paddingRight) + cell.offsetWidth - cell.clientWidth;
}

/// How wide cells are where nobody gives their table, its columns and cells a width. These are taken away for as long
/// as the question takes.
function leastWidths(table, cells) {
  if (table.rows.length > MOST_ROWS || getComputedStyle(table).tableLayout === 'fixed') return cells.map(() => 0);
  const { scrollX, scrollY } = window;
  const stylesBefore = [];
  const narrow = (element) => {
    stylesBefore.push([element, getAttribute(element, 'style')]);
    styleOf(element).setProperty('width', '1px', 'important');
  };
  narrow(table);
  for (const column of findAll(table, 'col, colgroup')) narrow(column);
  for (const row of table.rows) for (const cell of row.cells) narrow(cell);
  const least = cells.map((cell) => boxOf(cell).width);
  for (const [element, style] of stylesBefore) {
    setAttribute(element, 'style', style || '');  // the engine leaves an empty one where one is taken away unwritten
    if (style === null) removeAttribute(element, 'style');
  }
  window.scrollTo(scrollX, scrollY);
  return least;
}

/// The edge that a press takes hold of, as a drag wants it; null: there is none.
export function takeColumnEdge(x, y) {
  const edge = columnEdgeAt(x, y);
  const cells = edge && cellsAtEdge(edge);
  if (!cells) return null;
  const { before, after } = cells;
  const whole = boxOf(edge.table);
  const [leastBefore, leastAfter] = leastWidths(edge.table, [before, after]);
  return {
    cell: edge.cell, before, after, leastBefore, leastAfter,
    grows: getAttribute(edge.table, 'width') === null && !styleOf(edge.table).width,
    sign: isRightToLeft(edge.table) ? -1 : 1,
    x: cells.x + window.scrollX, top: whole.top + window.scrollY, height: whole.height,
    widthBefore: boxOf(before).width, widthAfter: boxOf(after).width,
    extraBefore: extraWidth(before), extraAfter: extraWidth(after),
    tableWidth: Math.round(boxOf(before.parentElement).width),
  };
}

/// The handle that a table's own edges are, without its being selected: the edge at its end sets the width,
/// the corner below it both measures.
export function tableHandleAt(table, x, y) {
  const box = boxOf(table), leftwards = isRightToLeft(table);
  const end = leftwards ? box.left : box.right;
  const isAtEnd = Math.abs(x - end) <= CORNER, isAtBottom = Math.abs(y - box.bottom) <= CORNER;
  const atEdge = Math.abs(x - end) <= NEAR_EDGE;
  const sideways = leftwards ? -1 : 1;
  if (isAtEnd && isAtBottom) return { x: sideways, y: 1, cursor: leftwards ? 'nesw-resize' : 'nwse-resize' };
  return atEdge ? { x: sideways, y: 0, cursor: 'ew-resize' } : null;
}

/// The cursor over what the mouse can take hold of at a point; null: none.
export function edgeCursorAt(x, y) {
  const target = beneath(() => elementAtPoint(x, y));
  const edge = target && edgeAt(target, x, y);
  if (edge) {
    const handle = nameOf(edge) === 'TABLE' && tableHandleAt(edge, x, y);
    return handle ? handle.cursor : null;
  }
  return columnEdgeAt(x, y) ? 'col-resize' : null;
}
