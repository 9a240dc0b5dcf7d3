// What a dialog covers of the window. What is selected is brought into the rest.

import { revealFocus } from './selection.js';
import { state } from './state.js';

export const coverSheet = new CSSStyleSheet();

/// The lines beside the word are read as well.
const AROUND = 40;

/// From the window's upper and its lower edge on. A page gets as much more below, so that its last line comes into
/// the open as well.
export function cover(top, bottom) {
  if (top) top += AROUND;
  if (bottom) bottom += AROUND;
  state.cover = { top, bottom };
  coverSheet.replaceSync(top || bottom ? `@media screen {
    :where(html) { scroll-padding: ${top}px 0 ${bottom}px; }
    html::after { content: ''; display: block; height: ${bottom}px; }
  }` : '');
  if (top || bottom) revealFocus();
}
