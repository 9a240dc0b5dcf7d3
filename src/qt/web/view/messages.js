// Messages up, gathered within a task, and tasks of our own.

import { state } from './state.js';

// Timers don't run where the page's script is off; message ports do.
const soon = new MessageChannel();
let tasks = [];

soon.port1.onmessage = () => {
  const ready = tasks;
  tasks = [];
  for (const task of ready) task();
};

/// Runs a task after the present one.
export function later(task) {
  tasks.push(task);
  soon.port2.postMessage(0);
}

let bridge = null;
let outbox = [];
let flushing = false;

export function connectBridge(object) {
  bridge = object;
}

export function tell(...message) {
  outbox.push(message);
  if (flushing) return;
  flushing = true;
  queueMicrotask(() => {
    flushing = false;
    const messages = outbox;
    outbox = [];
    if (bridge) bridge.up(JSON.stringify([state.page, state.seen, messages]));
  });
}

/// Which of Shift, Ctrl and Alt are held, as messages tell it.
export function modifiersOf(event) {
  return (event.shiftKey ? 1 : 0) | (event.ctrlKey ? 2 : 0) | (event.altKey ? 4 : 0);
}
