// Patches: operations that make the page's tree what the document's is.

import { boxOf, detach, insertBefore, nameOf, newComment, newElement, newElementIn, newText, parentOf, removeAttribute, root,
  setAttribute, setAttributeNS, walk } from './dom.js';
import { mayRise, paintFarRoomsApart, seemsToRise } from './far_rooms.js';
import { host, keepHost } from './host.js';
import { ids, nodes, state } from './state.js';
import { childCame, childGoes, emptied, forgetRooms, settleRooms, styleMayDiffer, stylesMayDiffer } from './rooms.js';
import { tell } from './messages.js';
import { unmark } from './marks.js';

const NAMESPACES = [null, 'http://www.w3.org/2000/svg', 'http://www.w3.org/1998/Math/MathML'];
const ATTRIBUTE_NAMESPACES = [null, 'http://www.w3.org/1999/xlink',
  'http://www.w3.org/XML/1998/namespace', 'http://www.w3.org/2000/xmlns/'];

function known(id) {
  const node = nodes.get(id);
  if (!node) throw new Error('unknown node ' + id);
  return node;
}

function put(node, parentId, beforeId) {
  const parent = parentId ? known(parentId) : document;
  let before = beforeId ? known(beforeId) : null;
  if (!before && parentOf(host) === parent) before = host;
  takeOut(node);
  insertBefore(parent, node, before);
  childCame(parent, node, before);
  if (isOfASheet(node)) stylesMayDiffer();
}

function takeOut(node) {
  const parent = parentOf(node);
  if (!parent) return;
  if (isOfASheet(node)) stylesMayDiffer();
  childGoes(parent, node);
  detach(node);
}

/// A style sheet, or the text of one.
function isOfASheet(node) {
  const name = nameOf(node);
  if (name === '#text') {
    const parent = parentOf(node);
    return parent !== null && nameOf(parent) === 'STYLE';
  }
  return name === 'STYLE' || name === 'LINK' || name === 'HEAD';
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
    else setAttribute(element, name, value);
  } catch (error) {
    return;
  }
}

function makeElement(id, parent, before, name, space, attributes) {
  const element = space ? newElementIn(NAMESPACES[space], name) : newElement(name);
  for (let i = 0; i < attributes.length; i += 3) {
    give(element, attributes[i], attributes[i + 1], attributes[i + 2]);
  }
  put(remember(id, element), parent, before);
  if (name === 'dialog' || seemsToRise(attributes)) mayRise(element);
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

const operations = {
  e: makeElement,
  t: (id, parent, before, text) => put(remember(id, newText(text)), parent, before),
  c: (id, parent, before, text) => put(remember(id, newComment(text)), parent, before),
  d: (id) => takeOut(known(id)),
  p: (id, parent, before) => {
    put(known(id), parent, before);
    mayRise(known(id));
  },
  f: (id) => forget(known(id)),
  x: (id, offset, length, text) => {
    const node = known(id);
    node.replaceData(offset, length, text);
    if (isOfASheet(node)) stylesMayDiffer();
    if (!node.length) emptied(node);
  },
  a: (id, name, value, space) => {
    give(known(id), name, value, space);
    noteStyle(known(id));
  },
  n: (id, name) => {
    removeAttribute(known(id), name);
    noteStyle(known(id));
  },
};

function noteStyle(element) {
  if (isOfASheet(element)) stylesMayDiffer();
  else styleMayDiffer(element);
  mayRise(element);
}

/// Applies a patch and lays the page out. What doesn't fit is told and passed over.
export function applyPatch(number, list) {
  if (!state.started) {
    state.started = true;
    detach(root());
  }
  for (const operation of list) {
    try {
      const [kind, ...rest] = operation;
      operations[kind](...rest);
    } catch (error) {
      tell('failed', operation[1], String(error));
    }
  }
  keepHost();
  const settled = settleRooms();
  state.seen = number;
  if (root()) boxOf(root());
  if (settled) paintFarRoomsApart();
  tell('done', number);
}
