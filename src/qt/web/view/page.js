// The page's side of the view. It runs in an isolated script world: nothing here is seen by the page, and
// nothing that the page names can stand in the way, since all state lives in this closure. The page's tree
// is made from the operations that come down; what the mouse did and where things are goes up.
//
// The scripts of this folder are joined in one function, in the order that web_view.cpp names them in:
// they share the names that stand here.
(function () {
  'use strict';

  // Once a page: the host may speak to one page twice when loads overtake each other.
  if (Object.prototype.hasOwnProperty.call(globalThis, 'tvxView')) return;
  const view = {};
  Object.defineProperty(globalThis, 'tvxView', { value: view });

  const NAMESPACES = [null, 'http://www.w3.org/2000/svg', 'http://www.w3.org/1998/Math/MathML'];
  const ATTRIBUTE_NAMESPACES = [null, 'http://www.w3.org/1999/xlink',
    'http://www.w3.org/XML/1998/namespace', 'http://www.w3.org/2000/xmlns/'];

  const page = Number(document.documentElement.getAttribute('tvx-page'));
  const nodes = new Map();    // id to node
  const ids = new WeakMap();  // node to id
  let bridge = null;
  let seen = 0;               // the last patch applied
  let started = false;        // the skeleton has given way to the document's own tree
  let editable = true;
  let focused = false;
  let freePlacement = false;  // positioned elements may be dragged to where they shall stand
  let control = 0;            // the element selected as a whole

  // A task of its own. Timers don't run where the page's script is off; message ports do.
  const soon = new MessageChannel();
  let tasks = [];
  soon.port1.onmessage = () => {
    const ready = tasks;
    tasks = [];
    for (const task of ready) task();
  };
  function later(task) {
    tasks.push(task);
    soon.port2.postMessage(0);
  }

  // --- messages up, gathered within a task ---

  let outbox = [];
  let flushing = false;

  function tell(...message) {
    outbox.push(message);
    if (flushing) return;
    flushing = true;
    queueMicrotask(() => {
      flushing = false;
      const messages = outbox;
      outbox = [];
      if (bridge) bridge.up(JSON.stringify([page, seen, messages]));
    });
  }
