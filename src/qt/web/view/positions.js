// Positions, between the page's terms and the document's.

import { body, boxOf, caretAtPoint, childrenOf, contains, elementAtPoint, findAll, parentOf, typeOf } from './dom.js';
import { beneath, host } from './host.js';
import { ids } from './state.js';

/// A position in the document's terms: null where the document has none.
export function positionOf(node, offset) {
  while (node && !ids.has(node)) {
    const parent = parentOf(node);
    if (!parent || parent === document) return null;
    offset = Array.prototype.indexOf.call(childrenOf(parent), node);
    node = parent;
  }
  if (!node) return null;
  if (typeOf(node) === 1 && parentOf(host) === node) offset = Math.min(offset, childrenOf(node).length - 1);
  return [ids.get(node), offset];
}

/// The id of the innermost element of the document around a target of the mouse; 0: none.
export function elementIdOf(target) {
  let node = target && typeOf(target) === 1 ? target : target && parentOf(target);
  while (node && !ids.has(node)) node = parentOf(node);
  return node ? ids.get(node) : 0;
}

const DISABLED = ['input', 'select', 'textarea', 'button'].map((name) => name + ':disabled').join();

/// The engine tells of no press on a disabled field: the mouse passes through it (style/editing.css), and it is found here.
function disabledFieldAt(around, x, y) {
  if (!around || typeOf(around) !== 1) return null;
  return Array.from(findAll(around, DISABLED)).find((field) => {
    const box = boxOf(field);
    return x >= box.left && x < box.right && y >= box.top && y < box.bottom;
  }) || null;
}

/// The element of the page that the mouse is over, whatever is drawn there.
export function targetOf(event) {
  const { clientX, clientY } = event;
  const target = event.target === host ? beneath(() => elementAtPoint(clientX, clientY)) : event.target;
  return disabledFieldAt(target, clientX, clientY) || target;
}

export function positionAt(x, y) {
  const range = beneath(() => caretAtPoint(x, y));
  if (!range) return null;
  const whole = body();
  // Beside the body there is no position for a caret: its end is meant.
  if (whole && !contains(whole, range.startContainer)) return positionOf(whole, childrenOf(whole).length);
  return positionOf(range.startContainer, range.startOffset);
}

/// [anchor, focus] of the native selection.
export function nativeSelection() {
  const selection = getSelection();
  if (!selection.rangeCount) return [null, null];
  return [positionOf(selection.anchorNode, selection.anchorOffset),
    positionOf(selection.focusNode, selection.focusOffset)];
}

/// The native selection as a text, to compare it by.
export function selectionText() {
  const selection = getSelection();
  if (!selection.rangeCount) return '';
  const key = (node, offset) => (ids.get(node) || 0) + ':' + offset;
  return key(selection.anchorNode, selection.anchorOffset) + ' ' +
    key(selection.focusNode, selection.focusOffset);
}

export function lengthOf(node) {
  return typeOf(node) === 1 ? childrenOf(node).length - (parentOf(host) === node ? 1 : 0) : node.length;
}
