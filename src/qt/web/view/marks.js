// Waves under words and the grounds of what was found: highlights of the engine, which draws them with the text and moves
// them with it. Nothing of them stands in the page's tree but an attribute of the elements that have any (style/editing.css).
// The engine goes through all of them for each frame, and an article has thousands: rooms out of sight show none.

import { getAttribute, newRange, parentElementOf, setAttribute, typeOf, walk } from './dom.js';
import { isInFarRoom } from './rooms.js';
import { nodes } from './state.js';

// By the kind of a mark; where two lie over each other the later one is seen. An engine without highlights shows none.
const NAMES = ['tvx-spelling', 'tvx-hit', 'tvx-present-hit', 'tvx-place'];
const highlights = typeof Highlight === 'function' && CSS.highlights ? NAMES.map((name, priority) => {
  const highlight = new Highlight();
  highlight.priority = priority;
  CSS.highlights.set(name, highlight);
  return highlight;
}) : [];

/// On paper there are none: the engine draws a text with a highlight twice, whatever that looks like.
export function registerMarks(areSeen) {
  highlights.forEach((highlight, kind) => {
    if (areSeen) CSS.highlights.set(NAMES[kind], highlight);
    else CSS.highlights.delete(NAMES[kind]);
  });
}

const rangesOf = highlights.map(() => new Map());  // of a text
const hasMarks = () => rangesOf.some((ranges) => ranges.size > 0);

const MARKED = 'tvx-marked';

/// An element keeps it when its marks have gone: it costs little, and more are likely.
function nameBearer(text) {
  const element = parentElementOf(text);
  if (element && getAttribute(element, MARKED) === null) setAttribute(element, MARKED, '');
}

/// A text that was moved stands in another element with its marks.
export function marksMoved(text) {
  if (rangesOf.some((ranges) => ranges.has(text))) nameBearer(text);
}

function unmarkKind(kind, text) {
  for (const range of rangesOf[kind].get(text) || []) highlights[kind].delete(range);
  rangesOf[kind].delete(text);
}

/// What a text has no more; also for texts that the page forgets.
export function unmark(text) {
  highlights.forEach((_, kind) => unmarkKind(kind, text));
}

/// All marks of a kind in some texts: [[id, kind, from, to, from, to...], ...].
export function mark(texts) {
  if (!highlights.length) return;
  for (const [id, kind, ...places] of texts) {
    const text = nodes.get(id);
    if (!text || typeOf(text) !== 3) continue;
    unmarkKind(kind, text);
    const ranges = [], isFar = isInFarRoom(text);
    for (let i = 0; i < places.length; i += 2) {
      if (places[i + 1] > text.length) continue;
      const range = newRange();
      range.setStart(text, places[i]);
      range.setEnd(text, places[i + 1]);
      if (!isFar) highlights[kind].add(range);
      ranges.push(range);
    }
    if (!ranges.length) continue;
    rangesOf[kind].set(text, ranges);
    if (!isFar) nameBearer(text);
  }
}

/// Shows the marks of all texts in a node, or takes them away until they are to be shown again.
export function showMarks(top, isShown) {
  if (!hasMarks()) return;
  const walker = walk(top, NodeFilter.SHOW_TEXT);
  for (let node = top; node; node = walker.nextNode()) {
    if (isShown) marksMoved(node);
    highlights.forEach((highlight, kind) => {
      for (const range of rangesOf[kind].get(node) || []) {
        if (isShown) highlight.add(range);
        else highlight.delete(range);
      }
    });
  }
}

/// The texts that have a mark of a kind, in the order in which they were marked: for tests.
export function markedTexts(kind) {
  return highlights.length ? [...highlights[kind]].map(String).filter((text) => text) : [];
}
