// What is taken as a whole, and where the mouse takes hold of it.

import { body, boxOf, closest, elementAtPoint, matches, nameOf, parentElementOf, styleOf, typeOf } from './dom.js';
import { HANDLES, frame } from './boxes.js';
import { beneath } from './host.js';
import { ids, nodes, state } from './state.js';

const WHOLE = 'img,input,select,textarea,button,video,audio,canvas,hr,meter,progress,marquee,tvx-box,svg';
const REPLACED = 'img,video,canvas,svg';  // their height follows their width: both are set

export function wholeAround(target) {
  return closest(target, WHOLE);
}

export function isPositioned(element) {
  const style = styleOf(element);
  return Boolean(style) && style.position === 'absolute';
}

export function isMovable(element) {
  return state.freePlacement && isPositioned(element);
}

export function isMediaLike(element) {
  return matches(element, REPLACED);
}

/// Whether a point is at the edge of a box: within 4 pixels outside of it, and 3 inside.
export function nearEdge(box, x, y) {
  const within = (grow) => x >= box.left - grow && x <= box.right + grow && y >= box.top - grow &&
    y <= box.bottom + grow;
  return within(4) && !within(-3);
}

function ancestry(element) {
  const line = [];
  for (; element && typeOf(element) === 1; element = parentElementOf(element)) line.push(element);
  return line;
}

/// The table or the positioned element whose edge is at a point. They are meant as wholes there, where
/// inside of them a caret can stand.
export function edgeAt(target, x, y) {
  const candidates = ancestry(target);
  // Right outside of its edge an element isn't the target yet.
  for (const [dx, dy] of [[4, 0], [-4, 0], [0, 4], [0, -4], [4, -4], [-4, -4]]) {
    const near = beneath(() => elementAtPoint(x + dx, y + dy));
    if (!near) continue;
    const table = closest(near, 'table');
    if (table) candidates.push(table);
    candidates.push(...ancestry(near).filter(isPositioned));
  }
  return candidates.find((element) => (nameOf(element) === 'TABLE' || isPositioned(element)) &&
    element !== body() && nodes.has(ids.get(element)) && nearEdge(boxOf(element), x, y)) || null;
}

export function handleAt(x, y) {
  if (!state.control || frame.style.display === 'none') return null;
  return HANDLES.find((handle) => {
    if (!handle.shown) return false;
    const box = handle.box.getBoundingClientRect();
    return x >= box.left - 1 && x <= box.right + 1 && y >= box.top - 1 && y <= box.bottom + 1;
  }) || null;
}
