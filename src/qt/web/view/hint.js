// The sentence of help that an empty page shows where its first line will be. It is drawn over the page, and no part of it.

import { body, boxOf, childrenOf, clientLeftOf, clientTopOf, clientWidthOf, nameOf, typeOf, walk } from './dom.js';
import { hide, hint, setSentence, showBox, write } from './boxes.js';
import { px } from './geometry.js';
import { state } from './state.js';

const LINES = /^(P|DIV|H[1-6])$/;
const FORMATS = /^(A|B|BIG|CODE|EM|FONT|I|S|SMALL|SPAN|STRIKE|STRONG|SUB|SUP|TT|U)$/;

/// The element that the first line of an empty page stands in: its one paragraph or heading, else the body. Null: the page
/// has something that is seen, or that is neither.
function emptyLine() {
  const page = body();
  if (!page || nameOf(page) !== 'BODY' || !childrenOf(page)[0]) return page;
  let line = page, breaks = 0;
  const walker = walk(page, NodeFilter.SHOW_ELEMENT | NodeFilter.SHOW_TEXT);
  for (let node = walker.nextNode(); node; node = walker.nextNode()) {
    if (typeOf(node) === 3) {
      if (/[^ \t\r\n\f]/.test(node.data)) return null;
    } else if (nameOf(node) === 'BR') {
      if (breaks++) return null;
    } else if (LINES.test(nameOf(node))) {
      if (line !== page) return null;
      line = node;
    } else if (!FORMATS.test(nameOf(node))) {
      return null;
    }
  }
  return line;
}

const TAKEN_OVER = ['color', 'direction', 'fontFamily', 'fontSize', 'fontStyle', 'fontWeight', 'letterSpacing', 'lineHeight',
  'textAlign', 'textIndent'];

export function drawHint() {
  const line = state.hint && state.editable ? emptyLine() : null;
  const style = line && getComputedStyle(line);
  const box = line && boxOf(line);
  if (!box || !box.width || style.visibility !== 'visible' || style.writingMode !== 'horizontal-tb') return hide(hint);
  const values = TAKEN_OVER.map((property) => style[property]);
  const left = box.left + clientLeftOf(line) + px(style.paddingLeft);
  const top = box.top + clientTopOf(line) + px(style.paddingTop);
  const width = clientWidthOf(line) - px(style.paddingLeft) - px(style.paddingRight);
  TAKEN_OVER.forEach((property, i) => write(hint, property, values[i]));
  setSentence(state.hint);
  showBox(hint, left, top, width);
}
