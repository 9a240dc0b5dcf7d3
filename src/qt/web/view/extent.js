// The page's height while a long page is coming in. What is still to come is reckoned by what is there, so that the window's
// scroll bar is that of the whole document from the start. A box out of the page's tree makes the room; whoever moves the bar
// into it, or to where another part of the document stands, is shown what belongs there, sent before its turn.
//
// Such a part stands right after what is there, which is higher up: the whole page is shifted down then, so that the part is
// where the bar is. As what is missing comes in above it the shift goes.

import { addBox, beneath, host } from './host.js';
import { body, boxOf, caretAtPoint, lastElementOf, listenOn, parentElementOf, previousElementOf, root } from './dom.js';
import { farRoomsLater } from './far_rooms.js';
import { ids } from './state.js';
import { tell } from './messages.js';

export const shiftSheet = new CSSStyleSheet();

const LONGEST_WAIT = 1000;  // milliseconds, for an answer
const BETWEEN = 100;        // questions about what is shown

const spacer = addBox('spacer');
let knownShare = 1, endIsThere = true;  // of the document
let pageShift = 0;   // downwards
let pageHeight = 0;  // with what is to come; 0: all is there
let barIsHeld = false;
let barLeads = false;  // what scrolls is the bar: the engine tells of it late, after the release of the mouse perhaps
let askedFor = null;  // { isBlank }: what the document has not answered yet
let askedAt = -BETWEEN, askedShare = -1;

const waitsForPart = () => askedFor !== null && askedFor.isBlank;

/// What comes in above the window takes off the shift: the engine doesn't scroll by it (hold.js).
const sheetOfShift = () => `@media screen {
    html { margin-top: ${pageShift}px !important; }
    html, body { overflow-anchor: none !important; }
  }`;

function setShift(pixels) {
  pageShift = pixels;
  shiftSheet.replaceSync(pageShift ? sheetOfShift() : '');
  farRoomsLater();
}

function setHeight(pixels) {
  pageHeight = Math.round(pixels);
  spacer.style.display = pageHeight ? 'block' : 'none';
  if (pageHeight) spacer.style.height = pageHeight - (boxOf(host).top + window.scrollY) + 'px';
}

/// The lower edge of what is there, from the page's upper one. The root is no higher than the window where its style says so.
function lowerEdge() {
  const top = root(), inside = body();
  let last = inside && lastElementOf(inside);
  for (let i = 0; last && i < 8 && boxOf(last).height === 0; ++i) last = previousElementOf(last);
  return window.scrollY + Math.max(...[top, inside, last].filter(Boolean).map((element) => boxOf(element).bottom));
}

/// Whether it is the window that scrolls the page, and not an element of it.
function windowScrolls(there) {
  if (there <= window.innerHeight) return false;
  const isVisible = (element) => getComputedStyle(element).overflowY === 'visible';
  return isVisible(root()) || !body() || isVisible(body());
}

/// Nothing is to come any more, or nobody knows how much.
function allIsThere() {
  const top = window.scrollY - pageShift;  // a page that becomes lower may scroll by that
  if (pageHeight) setHeight(0);
  if (!pageShift) return;
  setShift(0);
  window.scrollTo({ top, behavior: 'instant' });
}

/// Reckons the page's height anew. Where the end is there already, it stands at the bar's end.
function reckon() {
  const edge = lowerEdge(), there = edge - pageShift;
  if (knownShare === 1 || !windowScrolls(there)) return allIsThere();
  const reckoned = knownShare > 0 ? Math.max(edge, there / knownShare) : 0;
  if (edge > pageHeight || Math.abs(reckoned - pageHeight) > pageHeight / 100) setHeight(reckoned);
  const way = pageHeight - edge;
  if (!endIsThere || way < 1 || window.scrollY + 3 * window.innerHeight < edge) return;
  setShift(pageShift + way);
  window.scrollBy({ top: way, behavior: 'instant' });
}

/// A patch has been applied and laid out: how much of the document there is now. As long as it is the bar that scrolls, the
/// page keeps its height.
export function extentIs(newShare, newHasEnd) {
  if (newShare === 1 && knownShare === 1 && !pageHeight) return;
  knownShare = newShare;
  endIsThere = newHasEnd;
  if (askedFor && performance.now() - askedAt > LONGEST_WAIT) askedFor = null;
  if (barLeads && pageHeight && (isBarAtEnd() || isBlank())) leadBar();
  if (!pageHeight || !barLeads) reckon();
  else endWithTheLast();
}

/// All is there, and nobody holds the bar.
function endWithTheLast() {
  if (knownShare === 1 && !barIsHeld && !waitsForPart()) allIsThere();
}

/// So much has come in above what is in the window: how far the page has to scroll for it.
export function takeOffShift(pixels) {
  const part = Math.max(0, Math.min(pageShift, pixels));
  if (part) setShift(pageShift - part);
  return pixels - part;
}

/// Nothing but the bar goes to where nothing is, and the page's upper end is the bar's.
export function keepToPage() {
  if (!pageHeight || barLeads) return;
  if (pageShift && window.scrollY < pageShift + window.innerHeight) {
    const top = Math.max(0, window.scrollY - pageShift);
    setShift(0);
    window.scrollTo({ top, behavior: 'instant' });
  }
  const most = Math.max(lowerEdge() - window.innerHeight, pageShift);
  if (window.scrollY > most + 1) window.scrollTo({ top: most, behavior: 'instant' });
}

/// Whether a part of the window shows nothing, as that part of the document isn't there.
function isBlank() {
  const { scrollY, innerHeight } = window;
  return scrollY < pageShift - 1 || scrollY + innerHeight > lowerEdge() + 1;
}

/// The number of what stands at the window's upper edge; 0 where it can't be told.
function shownAtTop() {
  const range = beneath(() => caretAtPoint(window.innerWidth / 2, 1));
  const node = range && range.startContainer;
  return node && node !== body() && ids.get(node) || 0;
}

/// Whether the bar is at its end. What is there may go further, where it is shifted by an estimate.
function isBarAtEnd() {
  return window.scrollY + window.innerHeight >= Math.max(pageHeight, pageShift ? 0 : lowerEdge()) - 2;
}

/// The document's end stands at the bar's.
function showEnd() {
  const way = pageHeight - lowerEdge();
  if (Math.abs(way) >= 1) setShift(Math.max(0, pageShift + way));
  window.scrollTo({ top: lowerEdge() - window.innerHeight, behavior: 'instant' });
}

/// Asks for what belongs where the bar is. Where something is there already it is asked now and then whether that is right, and
/// `atOnce` where the bar may have moved since the last question.
function leadBar(atOnce) {
  if (!pageHeight) return;
  const wanted = isBarAtEnd() ? 1 : Math.min(1, window.scrollY / pageHeight);
  // Whoever goes to the end doesn't wait for what the bar has passed.
  if (waitsForPart() && (wanted < 1 || askedShare === 1)) return;
  if (wanted === 1 && endIsThere) return showEnd();
  const blank = wanted === 1 || isBlank();
  const isSame = Math.abs(wanted - askedShare) < 0.001;
  if ((isSame || !(blank || atOnce)) && performance.now() - askedAt < BETWEEN) return;
  const shown = blank ? 0 : shownAtTop();
  if (!blank && !shown) return;
  askedAt = performance.now();
  askedShare = wanted;
  askedFor = { isBlank: blank };
  tell('bar', wanted, shown);
}

/// The element's box, or that of the innermost around it that has one.
function shownBox(node) {
  for (let element = node; element; element = parentElementOf(element)) {
    const box = boxOf(element);
    if (box.width || box.height) return box;
  }
  return boxOf(root());
}

/// What was asked for is there: the page is shifted so that it stands in the window. False if nothing was asked for.
export function showAsked(node, atTop) {
  if (!askedFor) return false;
  if (askedShare === 1 && atTop) return true;  // what was asked for before the end
  const { scrollY, innerHeight } = window, wasBlank = askedFor.isBlank;
  askedFor = null;
  if (endIsThere && isBarAtEnd()) {
    showEnd();
  } else if (!wasBlank || isBlank()) {
    const box = shownBox(node), edge = lowerEdge();
    let way = atTop ? -box.top : innerHeight - box.bottom;
    if (endIsThere) way = Math.max(way, scrollY + innerHeight - edge);  // nothing comes after it
    const rest = Math.min(pageShift + way, 0);
    setShift(pageShift + way - rest);
    if (rest) window.scrollBy({ top: -rest, behavior: 'instant' });
  }
  if (barLeads) leadBar(true);
  endWithTheLast();
  return true;
}

export const isBarHeld = () => barIsHeld;

export function takeBar() {
  barIsHeld = barLeads = knownShare < 1;
}

/// The mouse is released, or has been where nobody heard of it.
export function letBarGo() {
  if (!barIsHeld) return;
  barIsHeld = false;
  endWithTheLast();
}

/// From now on it is something else that scrolls.
export function leaveBar() {
  barIsHeld = false;
  barLeads = false;
  askedFor = null;
}

export function listenToScrolling() {
  listenOn(document, 'scroll', () => {
    if (barLeads) leadBar();
    else keepToPage();
  });
}
