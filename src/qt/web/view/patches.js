// Patches: operations that make the page's tree what the document's is.

import { boxOf, detach, insertBefore, nameOf, newComment, newElement, newElementIn, newText, parentOf, removeAttribute, root,
  setAttribute, setAttributeNS, walk } from './dom.js';
import { extentIs } from './extent.js';
import { farRoomsLater, mayRise, seemsToRise } from './far_rooms.js';
import { hold, keepHeld } from './hold.js';
import { freshAddress, notePicture } from './fresh_pictures.js';
import { host, isInElementOfHost, keepHost } from './host.js';
import { ids, nodes, state } from './state.js';
import { childCame, childGoes, emptied, forgetRooms, settleRooms, styleMayDiffer, stylesMayDiffer } from './rooms.js';
import { tell } from './messages.js';
import { marksMoved, unmark } from './marks.js';

const NAMESPACES = [null, 'http://www.w3.org/2000/svg', 'http://www.w3.org/1998/Math/MathML'];
const ATTRIBUTE_NAMESPACES = [null, 'http://www.w3.org/1999/xlink',
  'http://www.w3.org/XML/1998/namespace', 'http://www.w3.org/2000/xmlns/'];

function known(id) {
  const node = nodes.get(id);
  if (!node) throw new Error('unknown node ' + id);
  return node;
}

/// Inserts a node that stands nowhere.
function insert(node, parentId, beforeId) {
  const parent = parentId ? known(parentId) : document;
  let before = beforeId ? known(beforeId) : null;
  if (!before && isInElementOfHost(parent) && parentOf(host) === parent) before = host;
  insertBefore(parent, node, before);
  if (parent === document) keepHost();  // it has the page's base address, which must stand before what is relative to it
  childCame(parent, node, before);
  return parent;
}

function put(node, parentId, beforeId) {
  takeOut(node);
  insert(node, parentId, beforeId);
  marksMoved(node);
  if (isOfASheet(node)) stylesMayDiffer();
}

function takeOut(node) {
  const parent = parentOf(node);
  if (!parent) return;
  if (isOfASheet(node)) stylesMayDiffer();
  childGoes(parent, node);
  detach(node);
}

const SHEETS = new Set(['STYLE', 'LINK', 'HEAD']);

/// A style sheet, or the text of one.
function isOfASheet(node) {
  const name = nameOf(node);
  if (name !== '#text') return SHEETS.has(name);
  const parent = parentOf(node);
  return parent !== null && nameOf(parent) === 'STYLE';
}

function remember(id, node) {
  nodes.set(id, node);
  ids.set(node, id);
  return node;
}

/// One attribute that the engine doesn't take is no reason to lose the element, or the patch.
function give(element, name, value, space) {
  try {
    if (space) setAttributeNS(element, ATTRIBUTE_NAMESPACES[space], name, value);
    else setAttribute(element, name, freshAddress(element, name, value));
  } catch (error) {
    return;
  }
}

function makeElement(id, parent, before, name, space, attributes) {
  const element = space ? newElementIn(NAMESPACES[space], name) : newElement(name);
  for (let i = 0; i < attributes.length; i += 3) {
    give(element, attributes[i], attributes[i + 1], attributes[i + 2]);
  }
  insert(remember(id, element), parent, before);
  if (SHEETS.has(name.toUpperCase())) stylesMayDiffer();
  if (name === 'dialog' || seemsToRise(attributes)) mayRise(element);
}

function makeText(id, parent, before, text) {
  if (nameOf(insert(remember(id, newText(text)), parent, before)) === 'STYLE') stylesMayDiffer();
}

function forget(top) {
  takeOut(top);
  const walker = walk(top);
  for (let node = top; node; node = walker.nextNode()) {
    const id = ids.get(node);
    if (id !== undefined && nodes.get(id) === node) nodes.delete(id);
    unmark(node);
    forgetRooms(node);
    if (isOfASheet(node)) stylesMayDiffer();
  }
}

// Each takes the operation as it came: thousands of copies of its parts would be there to be cleared away.
const operations = {
  e: (one) => makeElement(one[1], one[2], one[3], one[4], one[5], one[6]),
  t: (one) => makeText(one[1], one[2], one[3], one[4]),
  c: (one) => insert(remember(one[1], newComment(one[4])), one[2], one[3]),
  d: (one) => takeOut(known(one[1])),
  p: (one) => {
    put(known(one[1]), one[2], one[3]);
    mayRise(known(one[1]));
  },
  f: (one) => forget(known(one[1])),
  x: (one) => {
    const node = known(one[1]);
    node.replaceData(one[2], one[3], one[4]);
    if (isOfASheet(node)) stylesMayDiffer();
    if (!node.length) emptied(node);
  },
  a: (one) => {
    const element = known(one[1]);
    notePicture(element, one[2], one[3]);
    give(element, one[2], one[3], one[4]);
    noteStyle(element);
  },
  n: (one) => {
    removeAttribute(known(one[1]), one[2]);
    noteStyle(known(one[1]));
  },
};

function noteStyle(element) {
  if (isOfASheet(element)) stylesMayDiffer();
  else styleMayDiffer(element);
  mayRise(element);
}

/// Applies a patch and lays the page out. What doesn't fit is told and passed over. With it `share` of the document is there,
/// and perhaps its end.
export function applyPatch(number, list, share = 1, hasEnd = true) {
  if (!state.started) {
    state.started = true;
    detach(root());
  }
  const held = hold(list);
  for (const operation of list) {
    try {
      operations[operation[0]](operation);
    } catch (error) {
      tell('failed', operation[1], String(error));
    }
  }
  keepHost();
  const settled = settleRooms();
  state.seen = number;
  if (root()) boxOf(root());
  keepHeld(held);
  extentIs(share, hasEnd);
  if (settled) farRoomsLater();
  const now = performance.now();
  tell('done', number, now - state.since);
  state.since = now;
}
