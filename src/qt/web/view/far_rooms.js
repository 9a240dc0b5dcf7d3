// Rooms out of sight are painted apart. The engine keeps what it has painted of an isolated box, and need not walk through
// all of a long page to paint the few boxes in sight. Nothing is isolated near the window, since that can change what lies
// over what; nor is a room that holds what may stand elsewhere, in the window perhaps.

import { boxOf, findAll, matches, parentOf, querySelector, typeOf } from './dom.js';
import { allRooms, listAround, showKind } from './rooms.js';
import { showMarks } from './marks.js';
import { sheetFacts } from './sheet_facts.js';

/// What the elements of a room are matched against: whatever a sheet or its own style may take out of the flow.
function risingSelector() {
  return ['[style*="position" i]', 'dialog', ...sheetFacts().positioned].join();
}

function isOutOfFlow(element) {
  const { position } = getComputedStyle(element);
  return position !== 'static' && position !== 'relative';
}

function holdsWhatRises(room) {
  if (!sheetFacts().readable)
    return room.children.some((child) => typeOf(child) === 1 && [child, ...findAll(child, '*')].some(isOutOfFlow));
  const selector = risingSelector();
  return room.children.some((child) => typeOf(child) === 1 && (matches(child, selector) || querySelector(child, selector)));
}

/// Whether one of these elements may stand elsewhere: most pages have none, and are made without being looked through.
export function seemsToRise(attributes) {
  const { positioned, readable } = sheetFacts();
  return !readable || positioned.length > 0 || attributes.some((text) => /position/i.test(text));
}

/// What stands in a room has changed, deep in it perhaps.
export function mayRise(node) {
  for (let child = node, parent; (parent = parentOf(child)); child = parent) {
    const list = listAround(parent);
    const room = list && list.roomOf(child);
    if (room) room.rises = undefined;
  }
}

/// The first room whose box ends below a height of the window. Rooms stand below one another.
function firstBelow(rooms, y) {
  let from = rooms.length && rooms[0].isOpen ? 1 : 0, to = rooms.length;
  while (from < to) {
    const middle = (from + to) >> 1;
    if (boxOf(rooms[middle].slot).bottom > y) to = middle;
    else from = middle + 1;
  }
  return from;
}

function setFar(room, isFar) {
  if (isFar && room.rises === undefined) room.rises = holdsWhatRises(room);
  const isApart = isFar && !room.rises;
  if (room.isApart === isApart) return;
  room.isApart = isApart;
  showKind(room);
  for (const child of room.children) showMarks(child, !isApart);
}

let isWaiting = false;

/// At the end of the commands that are being followed.
export function farRoomsLater() {
  isWaiting = true;
}

export function paintWaitingRooms() {
  if (!isWaiting) return;
  isWaiting = false;
  paintFarRoomsApart();
}

/// Has the rooms painted apart that are more than a window away from the window.
export function paintFarRoomsApart() {
  const height = window.innerHeight;
  for (const { rooms, isDivided } of allRooms()) {
    if (!isDivided) {
      for (const room of rooms) setFar(room, false);
      continue;
    }
    const from = firstBelow(rooms, -height), to = firstBelow(rooms, 2 * height);
    rooms.forEach((room, i) => setFar(room, !room.isOpen && (i < from || i > to)));
  }
}
