// Waves under words: highlights of the engine, which draws them with the text and moves them with it. Nothing of them
// stands in the page's tree.

import { newRange, typeOf } from './dom.js';
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
    const ranges = [];
    for (let i = 0; i < places.length; i += 2) {
      if (places[i + 1] > text.length) continue;
      const range = newRange();
      range.setStart(text, places[i]);
      range.setEnd(text, places[i + 1]);
      waves.add(range);
      ranges.push(range);
    }
    if (ranges.length) rangesOf.set(text, ranges);
  }
}

/// The words that have a wave, in the order in which they were marked: for tests.
export function markedWords() {
  return waves ? [...waves].map(String).filter((word) => word) : [];
}
