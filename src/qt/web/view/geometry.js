// Where things are.

import { boxOf, boxesOf, childrenOf, clientLeftOf, clientTopOf, nameOf, newRange, nextOf,
  parentElementOf, previousOf, typeOf } from './dom.js';
import { host } from './host.js';

/// The number in a length of a style; 0 where it has none.
export function px(text) {
  return parseFloat(text) || 0;
}

function lineHeight(style) {
  const height = parseFloat(style.lineHeight);
  return height > 0 ? height : Math.round(parseFloat(style.fontSize) * 1.2);
}

/// The box of a caret in an element that has nothing to measure by.
export function emptyBox(element) {
  const box = boxOf(element);
  const style = getComputedStyle(element);
  const left = box.left + clientLeftOf(element) + px(style.paddingLeft);
  const right = box.right - px(style.paddingRight) - px(style.borderRightWidth);
  const top = box.top + clientTopOf(element) + px(style.paddingTop);
  const align = style.textAlign;
  const x = /center/.test(align) ? (left + right) / 2
    : /right|end/.test(align) && style.direction !== 'rtl' ? right
    : style.direction === 'rtl' && !/left/.test(align) ? right : left;
  return { left: x, top: top, height: lineHeight(style) };
}

function caretAt(rect, left) {
  return { left, top: rect.top, height: rect.height };
}

/// The caret's box beside the nodes around an offset of an element; null where they give none.
function caretBetween(before, after, element) {
  if (after && typeOf(after) === 3 && after.length) return caretBox(after, 0);
  if (after && typeOf(after) === 1 && after !== host) {
    const rect = boxesOf(after)[0];
    if (rect && rect.height > 0) return caretAt(rect, rect.left);
  }
  if (!before) return null;
  if (typeOf(before) === 3 && before.length) return caretBox(before, before.length);
  if (typeOf(before) !== 1) return null;
  const all = boxesOf(before);
  if (nameOf(before) !== 'BR') {
    const rect = all[all.length - 1];
    return rect && rect.height > 0 ? caretAt(rect, rect.right) : null;
  }
  const line = emptyBox(element);
  return all[0] ? { left: line.left, top: all[0].bottom, height: line.height } : null;
}

/// Where a caret stands: left, top and height in the viewport; null where nothing is laid out.
export function caretBox(node, offset) {
  const range = newRange();
  try {
    range.setStart(node, offset);
  } catch (error) {
    return null;
  }
  const rects = range.getClientRects();
  const last = rects[rects.length - 1];
  if (last && last.height > 0) return caretAt(last, last.left);
  if (typeOf(node) !== 1) {
    const parent = parentElementOf(node);
    // A text that nothing is left of, after a picture say.
    const beside = parent && node.length === 0 && caretBetween(previousOf(node), nextOf(node), parent);
    return beside || (parent ? emptyBox(parent) : null);
  }
  const children = childrenOf(node);
  return caretBetween(children[offset - 1], children[offset], node) || emptyBox(node);
}
