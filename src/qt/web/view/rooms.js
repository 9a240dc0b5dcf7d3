// Rooms: boxes that the children of a large element stand in, so that the engine lays out and paints a few dozen of them
// anew and not thousands. The boxes are slots in a closed shadow tree of the element: the page's own tree is as it was,
// and with it what selectors, positions and the mirror see. Where boxes would change how a page appears, an element has
// none, or they are no boxes (style/rooms.css).

import { BLOCKS, beginsAtEdge, beginsLine, inheritsUnread, isPlain, needsItsParent, valueOf } from './room_rules.js';
import { RoomList } from './room_list.js';
import { attachShadow, childrenOf, listenOn, nameOf, newElement, parentOf, typeOf } from './dom.js';
import { sheetFacts, sheetsMayDiffer } from './sheet_facts.js';

const LEAST = 200;  // an element with more children is large
const HOSTS = new Set(['BODY', 'DIV', 'SECTION', 'ARTICLE', 'MAIN', 'ASIDE', 'BLOCKQUOTE', 'HEADER', 'FOOTER', 'NAV']);

function sheetOf(text) {
  const sheet = new CSSStyleSheet();
  sheet.replaceSync(text);
  return sheet;
}
const flatSheet = sheetOf(TVX_SHEETS.rooms), dividedSheet = sheetOf(TVX_SHEETS.divided);

const large = new Map();    // element to { element, inside, list, isDivided, hasHeight, unsure }
const touched = new Set();  // elements whose children have changed
let triedWith = new WeakMap();  // elements to how many children they had when rooms were tried
let allUnsure = false;      // anything may have another style
let allowed = true;

// --- what patches tell ---

export function childCame(parent, node, before) {
  touched.add(parent);
  const one = large.get(parent);
  if (one) one.list.add(node, before);
}

export function childGoes(parent, node) {
  touched.add(parent);
  const one = large.get(parent);
  if (one) one.list.remove(node);
}

export function forgetRooms(element) {
  large.delete(element);
}

/// An attribute of an element has changed, and with it perhaps its style, or that of others.
export function styleMayDiffer(element) {
  const one = large.get(parentOf(element));
  if (one) {
    one.list.touch(element);
    touched.add(one.element);
  }
  if (large.has(element) || nameOf(element) === 'HTML' || nameOf(element) === 'BODY') allUnsure = true;
}

/// A text has nothing in it any more, and what it stands in may have no height.
export function emptied(text) {
  for (let node = text, parent; (parent = parentOf(node)); node = parent) {
    const one = large.get(parent);
    if (one) one.list.touch(node);
    if (one) touched.add(parent);
  }
}

/// A sheet or the window has changed.
export function stylesMayDiffer() {
  sheetsMayDiffer();
  allUnsure = true;
}

// --- the boxes ---

const isMostlyBlock = (node) => BLOCKS.has(nameOf(node));

/// All children are asked for their style: one that can't have rooms is asked again when it has half as many more.
function isWorthATrial(element) {
  if (!allowed || !HOSTS.has(nameOf(element))) return false;
  const count = childrenOf(element).length;
  if (count <= LEAST || count < 1.5 * (triedWith.get(element) || 0) || !isPlain(element)) return false;
  triedWith.set(element, count);
  return true;
}

function makeRooms(element) {
  if (!isWorthATrial(element)) return;
  const one = { element, inside: null, list: new RoomList(), isDivided: null, unsure: true,
    hasHeight: valueOf(element, 'height') !== 'auto' };
  for (const node of childrenOf(element)) {
    if (needsItsParent(node, one)) return;
    one.list.add(node, null);
  }
  one.list.divide(isMostlyBlock);
  if (one.list.rooms.length < 2) return;
  one.inside = attachShadow(element, { mode: 'closed', slotAssignment: 'manual' });
  large.set(element, one);
  setDivided(one, true);
}

/// New rooms that come after one that is far away: mostly they are as well, and need no other style then.
function followFarRooms(rooms) {
  const far = new Set();
  let isFar = false;
  for (const room of rooms) {
    if (room.slot) isFar = room.slot.className === 'far';
    else if (isFar) far.add(room);
  }
  return far;
}

/// Makes the slots what the list says, and answers the rooms whose start may be another. From the end on: a slot is put
/// before the next one. A comment can't stand in a slot.
function fillRooms(one) {
  const { dirty, rooms } = one.list;
  for (const room of dirty) {
    room.rises = room.isApart = undefined;
    if (room.slot && !rooms.includes(room)) room.slot.remove();
  }
  const far = followFarRooms(rooms);
  let next = null;
  for (let i = rooms.length - 1; i >= 0; --i) {
    const room = rooms[i];
    if (!room.slot) {
      room.slot = one.inside.insertBefore(newElement('slot'), next);
      if (far.has(room)) room.slot.className = 'far';
    }
    if (dirty.has(room)) room.slot.assign(...room.children.filter((node) => typeOf(node) !== 8));
    next = room.slot;
  }
  const changed = rooms.filter((room, i) => dirty.has(room) || dirty.has(rooms[i - 1]));
  dirty.clear();
  return changed;
}

/// What the style of a slot goes by.
export function showKind(room) {
  const kind = room.isOpen ? 'open' : room.isApart ? 'far' : '';
  if (room.slot.className !== kind) room.slot.className = kind;
}

function setOpen(room, isOpen) {
  if (Boolean(room.isOpen) === isOpen) return;
  room.isOpen = isOpen;
  showKind(room);
}

function setDivided(one, isDivided) {
  if (one.isDivided === isDivided) return;
  one.isDivided = isDivided;
  one.inside.adoptedStyleSheets = isDivided ? [flatSheet, dividedSheet] : [flatSheet];
}

/// The first room, where it is no box; it has nothing but what comes before the first block in flow, as the engine stops at
/// fewer positions where there is no box.
function openRoom(list) {
  const first = list.rooms[0];
  if (!first || beginsAtEdge(first.children)) return null;
  const at = first.children.findIndex(beginsLine);
  if (at > 0) list.endFirst(at);
  return first;
}

function settle(one) {
  const { element, list } = one;
  if (one.unsure) list.forgetRefusals();
  list.divide(isMostlyBlock);
  const changed = fillRooms(one);
  if (!allowed || !isPlain(element)) {
    one.unsure = true;
    return setDivided(one, false);
  }
  const doubtful = new Set(one.unsure ? list.rooms : changed);
  if (one.unsure) for (const room of list.rooms) room.rises = undefined;
  one.unsure = false;
  one.hasHeight = valueOf(element, 'height') !== 'auto';
  for (const room of doubtful) list.mend(room, beginsLine);
  for (const room of fillRooms(one)) doubtful.add(room);
  const opens = openRoom(list);
  for (const room of fillRooms(one)) doubtful.add(room);
  for (const room of doubtful) {
    if (!list.rooms.includes(room)) continue;
    room.isOdd = room.isTorn || room.children.some((child) => needsItsParent(child, one)) || inheritsUnread(room, element);
  }
  for (const room of list.rooms) setOpen(room, room === opens);
  setDivided(one, !list.rooms.some((room) => room.isOdd));
}

/// After changes of the tree and of styles: brings the rooms up to date. False where there was nothing to do.
export function settleRooms() {
  if (!allUnsure && !touched.size) return false;
  if (allUnsure) triedWith = new WeakMap();
  for (const element of touched) if (!large.has(element)) makeRooms(element);
  for (const one of large.values()) {
    if (allUnsure) one.unsure = true;
    if (one.unsure || one.list.dirty.size) settle(one);
  }
  touched.clear();
  allUnsure = false;
  return true;
}

/// Sheets that arrive, and rules that hold for some windows. `settled` is called when rooms may be others.
export function listenToStyles(settled) {
  // Of what is loaded the window hears of nothing but the page.
  listenOn(document, 'load', ({ target }) => {
    if (nameOf(target) !== 'LINK' && nameOf(target) !== 'STYLE') return;
    stylesMayDiffer();
    settleRooms();
    settled();
  }, true);
  window.addEventListener('resize', () => {
    if (!large.size || !sheetFacts().changing) return;
    allUnsure = true;
    settleRooms();
    settled();
  });
}

/// The rooms of all large elements, and whether they are boxes.
export function allRooms() {
  return [...large.values()].map((one) => ({ rooms: one.list.rooms, isDivided: one.isDivided }));
}

/// The rooms of an element's children; null where it has none.
export function listAround(element) {
  const one = large.get(element);
  return one ? one.list : null;
}

/// Whether a node stands in a room that is painted apart.
export function isInFarRoom(node) {
  for (let child = node, parent; (parent = parentOf(child)); child = parent) {
    const list = listAround(parent), room = list && list.roomOf(child);
    if (room && room.isApart) return true;
  }
  return false;
}

/// For tests: the rooms of all large elements, divided or not, and whether elements may be divided at all.
export const roomCounts = () => [...large.values()].map((one) => (one.isDivided ? one.list.rooms.length : 0));

export function allowRooms(isAllowed) {
  allowed = isAllowed;
  allUnsure = true;
  settleRooms();
}
