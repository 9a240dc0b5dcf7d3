// What the modules of the view have in common. A module can't set what it imports: what changes stands in objects.

import { root } from './dom.js';

export const nodes = new Map();    // id to node

const NUMBER = Symbol('id');
/// Node to id. The number stands on the node as this world of scripts has it, under a name that no page can give: a table
/// of all nodes of a large page would be gone through each time that the engine clears away.
export const ids = {
  get: (node) => (node ? node[NUMBER] : undefined),
  has: (node) => Boolean(node) && node[NUMBER] !== undefined,
  set: (node, id) => {
    node[NUMBER] = id;
  },
};

export const state = {
  page: Number(root().getAttribute('tvx-page')),
  seen: 0,               // the last patch applied
  since: 0,              // when the commands began that are being followed, or the last patch of them was done
  started: false,        // the skeleton has given way to the document's own tree
  editable: true,
  focused: false,
  freePlacement: false,  // positioned elements may be dragged to where they shall stand
  control: 0,            // the element selected as a whole
  hint: '',              // what an empty page says
  composed: null,        // what an input method is composing: { node, start, end }
  ownSelection: '',      // the native selection as it was last set or reported
  cover: { top: 0, bottom: 0 },  // how much of the window a dialog covers, from its edges on
};

/// The mouse, as far as the selection depends on it.
export const mouse = {
  pressed: false,  // a native selection is being drawn, once the mouse moves
  dragged: false,
  number: 0,       // of the last press or release
  drawn: 0,        // of the last one of the left button, which may draw a selection
};
