// The line of the window that a caret stands in, for who reads the page aloud.

import { nodes } from './state.js';
import { body, parentOf, typeOf } from './dom.js';
import { positionOf } from './positions.js';

const MOST_UNITS = 2000;

const isInline = (element) => getComputedStyle(element).display.startsWith('inline');

function blockAround(node) {
  let block = typeOf(node) === 1 ? node : parentOf(node);
  while (block && block !== body() && isInline(block)) block = parentOf(block);
  return block;
}

/// The box of one unit of a text; null where it isn't seen, as the blank at which a line is broken.
function unitBox(node, offset) {
  const range = document.createRange();
  range.setStart(node, offset);
  range.setEnd(node, offset + 1);
  const boxes = range.getClientRects();
  const box = boxes[boxes.length - 1];
  return box && box.width > 0 ? box : null;
}

function isBeside(box, other) {
  const middle = (box.top + box.bottom) / 2, otherMiddle = (other.top + other.bottom) / 2;
  return (middle > other.top && middle < other.bottom) || (otherMiddle > box.top && otherMiddle < box.bottom);
}

/// As far as units stand beside a box, in one direction: the last position that does.
function reach(walker, node, offset, step, box) {
  let last = [node, offset];
  for (let count = 0; count < MOST_UNITS; ++count) {
    const unit = step < 0 ? offset - 1 : offset;
    if (unit < 0 || unit >= node.data.length) {
      walker.currentNode = node;
      const next = step < 0 ? walker.previousNode() : walker.nextNode();
      if (!next) return last;
      node = next;
      offset = step < 0 ? node.data.length : 0;
      continue;
    }
    const other = unitBox(node, unit);
    if (other && !isBeside(other, box)) return last;
    offset += step;
    if (other) last = [node, offset];
  }
  return last;
}

/// Where the line starts and ends, in the document's terms; null where that can't be said.
export function lineAround(id, offset) {
  const node = nodes.get(id);
  if (!node || typeOf(node) !== 3) return null;
  // At the end of a line that is broken, the next one is meant, as the caret's box has it.
  const at = Math.min(offset, node.data.length);
  const box = (at < node.data.length && unitBox(node, at)) || (at > 0 && unitBox(node, at - 1));
  if (!box) return null;
  const walker = document.createTreeWalker(blockAround(node), NodeFilter.SHOW_TEXT);
  return [positionOf(...reach(walker, node, at, -1, box)), positionOf(...reach(walker, node, at, 1, box))];
}
