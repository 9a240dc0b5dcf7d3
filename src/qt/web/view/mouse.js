// The mouse: what it did, as it is told, and what the page itself makes of it.

import { closest, listenOn, nameOf, root } from './dom.js';
import { armDrag, dropDrag, endDrag, followDrag, isDragging } from './drag.js';
import { edgeAt, handleAt, wholeAround } from './wholes.js';
import { edgeCursorAt, tableHandleAt, takeColumnEdge } from './table_edges.js';
import { elementIdOf, nativeSelection, positionAt, selectionText, targetOf } from './positions.js';
import { factsLater, reportFacts } from './drawing.js';
import { leaveBar, letBarGo, takeBar } from './extent.js';
import { frame, grip, hide, showBox } from './boxes.js';
import { ids, mouse, nodes, state } from './state.js';
import { cornerCells, keepInCell } from './selected_cells.js';
import { later, modifiersOf, tell } from './messages.js';

const BUTTONS = [1, 4, 2];
let pressX = 0, pressY = 0;
let clicks = [];

/// Only what the mouse really drew is told as a selection: between a press and its report the document may
/// have set another.
function noteDrag(event) {
  const endedElsewhere = event.type === 'mousemove' && !(event.buttons & 1);
  if (endedElsewhere) mouse.pressed = false;
  if (mouse.pressed && Math.hypot(event.clientX - pressX, event.clientY - pressY) > 3) mouse.dragged = true;
}

/// `edge`: the element that is meant as a whole. `held`: the press was on selected text or on the edge of a
/// column: what is selected stays until the release, as a drag may follow.
function mouseMessage(type, number, event, target, prevented, edge, held) {
  const [anchor, focus] = prevented ? [null, null] : nativeSelection();
  return ['mouse', type, BUTTONS[event.button] || 1, Math.round(event.clientX), Math.round(event.clientY),
    modifiersOf(event), elementIdOf(target), positionAt(event.clientX, event.clientY), anchor, focus,
    edge ? ids.get(edge) || 0 : 0, Boolean(held), number];
}

function insideSelection(event) {
  const selection = getSelection();
  if (!selection.rangeCount || selection.isCollapsed) return false;
  const rects = selection.getRangeAt(0).getClientRects();
  for (const rect of rects) {
    if (event.clientX >= rect.left && event.clientX <= rect.right &&
        event.clientY >= rect.top && event.clientY <= rect.bottom) return true;
  }
  return false;
}

function listen(type, handler) {
  window.addEventListener(type, (event) => {
    if (event.isTrusted) handler(event);
  }, { capture: true, passive: false });
}

function prevent(event) {
  event.preventDefault();
  event.stopImmediatePropagation();
}

/// What a press of the mouse takes hold of: the `edge` of a whole with its `handle`, the edge of a `column`, something
/// `whole`, or selected text, which is `held` like a column.
function holdOf(event, target) {
  const x = event.clientX, y = event.clientY, isLeft = event.button === 0;
  let handle = state.editable && isLeft ? handleAt(x, y) : null;
  const edge = handle ? nodes.get(state.control) : state.editable && target ? edgeAt(target, x, y) : null;
  if (isLeft && !handle && edge && nameOf(edge) === 'TABLE') handle = tableHandleAt(edge, x, y);
  const single = isLeft && event.detail < 2 && !event.shiftKey;
  const column = state.editable && single && !edge ? takeColumnEdge(x, y) : null;
  const whole = edge || (!column && target && wholeAround(target));
  return { handle, edge, column, whole, held: column || (!whole && single && insideSelection(event)) };
}

/// The scroll bars stay the page's.
function isOnScrollBar(event, target) {
  return target === root() && (event.clientX >= root().clientWidth || event.clientY >= root().clientHeight);
}

/// Selected cells can't be dragged: on them the next selection starts, which the engine doesn't do on selected text.
function leaveSelectedCells(event) {
  const selection = getSelection();
  if (event.button !== 0 || event.detail > 1 || event.shiftKey || !selection.rangeCount) return;
  if (cornerCells(selection.anchorNode, selection.focusNode)) selection.removeAllRanges();
}

function press(event) {
  const number = ++mouse.number;
  const target = targetOf(event);
  const isLeft = event.button === 0;
  if (state.editable) leaveSelectedCells(event);
  if (isLeft) mouse.drawn = number;
  const { handle, edge, column, whole, held } = holdOf(event, target);
  const prevented = !state.editable || whole || !isLeft || held || (target && closest(target, 'summary'));
  const onScrollBar = isOnScrollBar(event, target);
  if (onScrollBar && isLeft) takeBar();
  else leaveBar();
  if (prevented && !onScrollBar) event.preventDefault();
  mouse.pressed = isLeft && !prevented;
  mouse.dragged = false;
  pressX = event.clientX;
  pressY = event.clientY;
  endDrag();
  if (state.editable && isLeft && !onScrollBar && (whole || held)) armDrag(event, whole, handle, column);
  hide(grip);
  if (!whole || ids.get(whole) !== state.control) {
    state.control = 0;
    hide(frame);
  }
  const selects = !prevented && (event.detail > 1 || event.shiftKey);
  // The native selection moves after the listeners.
  later(() => {
    if (isLeft && !prevented && event.detail > 2) keepInCell();
    state.ownSelection = selectionText();
    tell(...mouseMessage(0, number, event, column ? column.cell : target, !selects, edge, held));
    reportFacts();
  });
}

function release(event) {
  letBarGo();
  const number = ++mouse.number;
  if (event.button === 0) mouse.drawn = number;
  noteDrag(event);
  const target = targetOf(event);
  const drawn = mouse.pressed && mouse.dragged;
  mouse.pressed = false;
  const dropped = event.button === 0 && dropDrag(event);
  later(() => {
    state.ownSelection = selectionText();
    tell(...mouseMessage(1, number, event, target, !drawn));
    // What ends a drag is no click.
    if (!dropped) for (const [type, click, on] of clicks) tell(...mouseMessage(type, number, click, on, !drawn));
    clicks = [];
    reportFacts();
  });
}

/// A box under the mouse that has nothing but a cursor.
function showGrip(event) {
  const { clientX, clientY } = event;
  const cursor = state.editable && !event.buttons && !isDragging() && !handleAt(clientX, clientY)
    ? edgeCursorAt(clientX, clientY) : null;
  if (!cursor) return hide(grip);
  grip.style.cursor = cursor;
  showBox(grip, clientX - 4, clientY - 4, 8, 8);
}

function selectionMoved() {
  const now = selectionText();
  if (now === state.ownSelection) return;  // has been drawn
  factsLater();
  if (!mouse.pressed || !mouse.dragged) return;
  state.ownSelection = now;
  const [anchor, focus] = nativeSelection();
  if (anchor && focus) tell('select', anchor, focus);
}

function keepClick(type) {
  return (event) => {
    clicks.push([type, event, targetOf(event)]);
    prevent(event);
  };
}

export function listenToMouse() {
  listen('mousedown', press);
  listen('mouseup', release);
  listen('mousemove', (event) => {
    if (!event.buttons) letBarGo();
    noteDrag(event);
    followDrag(event);
    showGrip(event);
  });
  listen('click', keepClick(2));
  listen('dblclick', keepClick(3));
  listen('wheel', (event) => {
    leaveBar();
    if (event.ctrlKey) event.preventDefault();
  });
  for (const type of ['auxclick', 'contextmenu', 'submit', 'reset', 'toggle', 'dragstart', 'dragenter',
    'dragover', 'drop', 'paste', 'copy', 'cut', 'beforeinput', 'keydown', 'keypress', 'keyup', 'selectstart']) {
    listen(type, (event) => {
      if (type !== 'selectstart' || !state.editable) prevent(event);
    });
  }
  listenOn(document, 'selectionchange', selectionMoved);
  window.addEventListener('scroll', factsLater, true);
  window.addEventListener('resize', factsLater);
  listenOn(document, 'load', factsLater, true);  // an image that came moves what is below it
}
