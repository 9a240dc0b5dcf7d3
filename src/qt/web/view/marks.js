// Waves under words: highlights of the engine, which draws them with the text and moves them with it. Nothing of them
// stands in the page's tree. The engine goes through all of them for each frame, and an article has thousands: rooms out
// of sight show none.

import { newRange, typeOf, walk } from './dom.js';
import { isInFarRoom } from './rooms.js';
import { nodes } from './state.js';

const NAME = 'tvx-spelling';
// An engine without highlights shows no waves.
const waves = typeof Highlight === 'function' && CSS.highlights ? new Highlight() : null;
if (waves) CSS.highlights.set(NAME, waves);

const rangesOf = new WeakMap();  // of a text

/// What a text has no more; also for texts that the page forgets.
export function unmark(text) {
  for (const range of rangesOf.get(text) || []) waves.delete(range);
  rangesOf.delete(text);
}

/// All marks of some texts: [[id, from, to, from, to...], ...].
export function mark(texts) {
  if (!waves) return;
  for (const [id, ...places] of texts) {
    const text = nodes.get(id);
    if (!text || typeOf(text) !== 3) continue;
    unmark(text);
    const ranges = [], isFar = isInFarRoom(text);
    for (let i = 0; i < places.length; i += 2) {
      if (places[i + 1] > text.length) continue;
      const range = newRange();
      range.setStart(text, places[i]);
      range.setEnd(text, places[i + 1]);
      if (!isFar) waves.add(range);
      ranges.push(range);
    }
    if (ranges.length) rangesOf.set(text, ranges);
  }
}

/// Shows the waves of all texts in a node, or takes them away until they are to be shown again.
export function showMarks(top, isShown) {
  if (!waves) return;
  const walker = walk(top, NodeFilter.SHOW_TEXT);
  for (let node = top; node; node = walker.nextNode()) {
    for (const range of rangesOf.get(node) || []) {
      if (isShown) waves.add(range);
      else waves.delete(range);
    }
  }
}

/// The words that have a wave, in the order in which they were marked: for tests.
export function markedWords() {
  return waves ? [...waves].map(String).filter((word) => word) : [];
}
