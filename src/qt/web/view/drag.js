// A drag, from the press that may start one to its release. It is drawn here; what it has come to is told.

import { boxOf } from './dom.js';
import { dropCaret, guide, guideSize, hide, outline, outlineSize, restartBlink, shield, showBox,
  showCaretBox, stopBlink, write } from './boxes.js';
import { caretBox, px } from './geometry.js';
import { columnShift, columnWidths, movedBox, scrollPull, sizedBox } from './drag_geometry.js';
import { ids, nodes } from './state.js';
import { isMediaLike, isMovable, isPositioned } from './wholes.js';
import { modifiersOf, tell } from './messages.js';
import { positionAt } from './positions.js';

const DRAG_SIZE = 0, DRAG_MOVE = 1, DRAG_CONTENT = 2, DRAG_COLUMN = 3;
const DRAG_START = 0, DRAG_DROP = 1;
const FAR_ENOUGH = 4;  // before that a press with a trembling hand is a click

// From the press that may start a drag to its release.
let drag = null;  // { type, element, handle, column, x, y, box, started }

export function isDragging() {
  return drag !== null;
}

/// What the press of the left button on `whole`, a handle of it, the edge of a column, or the selected text
/// may become.
export function armDrag(event, whole, handle, column) {
  drag = {
    type: column ? DRAG_COLUMN : handle ? DRAG_SIZE : DRAG_CONTENT,
    element: column ? column.before : whole, handle, column, started: false,
    x: event.clientX + window.scrollX, y: event.clientY + window.scrollY,
  };
}

/// What an element's border and padding add to the width and height that it is given.
function extraOf(style) {
  if (style.boxSizing === 'border-box') return { width: 0, height: 0 };
  return {
    width: px(style.paddingLeft) + px(style.paddingRight) + px(style.borderLeftWidth) + px(style.borderRightWidth),
    height: px(style.paddingTop) + px(style.paddingBottom) + px(style.borderTopWidth) + px(style.borderBottomWidth),
  };
}

function startDrag(event) {
  drag.started = true;
  if (drag.type === DRAG_CONTENT && drag.element && isMovable(drag.element)) drag.type = DRAG_MOVE;
  if (drag.element) {
    const box = boxOf(drag.element);
    drag.box = { left: box.left + window.scrollX, top: box.top + window.scrollY, width: box.width, height: box.height };
  }
  shield.style.cursor = drag.type === DRAG_SIZE ? drag.handle.cursor : drag.column ? 'col-resize'
    : drag.type === DRAG_MOVE ? 'move' : event.ctrlKey ? 'copy' : 'default';
  write(shield, 'display', 'block');
  stopBlink();
  tellDrag(DRAG_START, event, {});
}

function tellDrag(phase, event, result) {
  const { width = null, height = null, left = null, top = null, at = null, was = null, edge = null } = result;
  tell('drag', phase, drag.type, drag.element ? ids.get(drag.element) || 0 : 0, Math.round(event.clientX),
    Math.round(event.clientY), modifiersOf(event), width, height, left, top, at, was, edge);
}

/// How far the mouse has gone from where it took hold: [right, down].
function wayOf(event) {
  return [event.clientX + window.scrollX - drag.x, event.clientY + window.scrollY - drag.y];
}

/// At the corner of an image, and with Shift everywhere, width and height keep their proportion.
function newSize(event) {
  const { handle, box } = drag;
  const proportion = event.shiftKey || (handle.x && handle.y && isMediaLike(drag.element));
  return sizedBox(box, handle, ...wayOf(event), proportion);
}

/// [the cell after the edge, both widths, the shift, the table's], as it is told.
function columnResult(event) {
  const { column } = drag, shift = columnShift(column, wayOf(event)[0]);
  return [ids.get(column.after) || 0, ...columnWidths(column, shift), shift, column.tableWidth];
}

function showGuide(event) {
  const { column } = drag, [, before, after, shift] = columnResult(event);
  const top = Math.max(column.top - window.scrollY, 0);
  const bottom = Math.min(column.top + column.height - window.scrollY, window.innerHeight);
  showBox(guide, column.x + column.sign * shift - window.scrollX, top, undefined, bottom - top);
  guideSize.textContent = column.sign > 0 ? before + ' | ' + after : after + ' | ' + before;
}

function showOutline(box, label) {
  showBox(outline, box.left - window.scrollX, box.top - window.scrollY, box.width, box.height);
  outlineSize.textContent = label;
}

export function showDropCaret(x, y) {
  const at = positionAt(x, y);
  const node = at && nodes.get(at[0]);
  showCaretBox(dropCaret, node ? caretBox(node, at[1]) : null);
  return at;
}

/// Near an edge of the window the page scrolls under a drag. False where it didn't.
export function autoscroll(x, y) {
  const { right, down } = scrollPull(x, y, window.innerWidth, window.innerHeight);
  if (!right && !down) return false;
  const before = [window.scrollX, window.scrollY];
  window.scrollBy(right / 2, down / 2);
  return before[0] !== window.scrollX || before[1] !== window.scrollY;
}

// The scroll goes on while the mouse rests there: one step a frame, as the engine draws them.
let scrolling = null;  // the last event of the drag

function keepScrolling() {
  if (!scrolling || !drag || !drag.started) return;
  if (!autoscroll(scrolling.clientX, scrolling.clientY)) {
    scrolling = null;
    return;
  }
  showDrag(scrolling);
  requestAnimationFrame(keepScrolling);
}

function showDrag(event) {
  if (drag.type === DRAG_CONTENT) {
    shield.style.cursor = event.ctrlKey ? 'copy' : 'default';
    showDropCaret(event.clientX, event.clientY);
  } else if (drag.type === DRAG_COLUMN) {
    showGuide(event);
  } else if (drag.type === DRAG_MOVE) {
    showOutline(movedBox(drag.box, ...wayOf(event)), '');
  } else {
    const box = newSize(event);
    showOutline(box, box.width + ' \u00d7 ' + box.height);
  }
}

export function followDrag(event) {
  if (!drag) return;
  if (!(event.buttons & 1)) return endDrag();
  const far = Math.hypot(...wayOf(event));
  if (!drag.started && far < FAR_ENOUGH) return;
  if (!drag.started) startDrag(event);
  showDrag(event);
  if (drag.type === DRAG_SIZE || drag.column) return;
  const rests = scrolling;
  scrolling = event;
  if (!rests) requestAnimationFrame(keepScrolling);
}

/// Where a positioned element stands, as `left` and `top` count for it.
function offsetOf(element) {
  const style = getComputedStyle(element);
  return { left: px(style.left), top: px(style.top) };
}

function resultOf(event) {
  if (drag.type === DRAG_CONTENT) return { at: positionAt(event.clientX, event.clientY) };
  if (drag.column) return { edge: columnResult(event) };
  const at = isPositioned(drag.element) ? offsetOf(drag.element) : null;
  if (drag.type === DRAG_MOVE) {
    const box = movedBox(drag.box, ...wayOf(event));
    return { left: Math.round(at.left + box.left - drag.box.left), top: Math.round(at.top + box.top - drag.box.top) };
  }
  const box = newSize(event);
  const extra = extraOf(getComputedStyle(drag.element));
  const both = isMediaLike(drag.element) || event.shiftKey;
  const result = { was: Math.round(drag.box.width - extra.width) };
  if (drag.handle.x || both) result.width = Math.max(1, Math.round(box.width - extra.width));
  if (drag.handle.y || both) result.height = Math.max(1, Math.round(box.height - extra.height));
  if (at && drag.handle.x < 0) result.left = Math.round(at.left + box.left - drag.box.left);
  if (at && drag.handle.y < 0) result.top = Math.round(at.top + box.top - drag.box.top);
  return result;
}

/// The release: tells what the drag has come to. False where there was none.
export function dropDrag(event) {
  if (!drag || !drag.started) {
    drag = null;
    return false;
  }
  tellDrag(DRAG_DROP, event, resultOf(event));
  endDrag();
  return true;
}

/// Away with it; what was dragged stays where it is.
export function endDrag() {
  drag = null;
  scrolling = null;
  for (const box of [outline, guide, dropCaret, shield]) hide(box);
  restartBlink();
}
