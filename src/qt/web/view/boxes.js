// The boxes of the overlay.

import { addBox, host } from './host.js';
import { newElement } from './dom.js';

// Takes the mouse while something is dragged, so that the cursor is the drag's own.
export const shield = addBox('shield');
// Shows over an edge that the mouse can take hold of it.
export const grip = addBox('grip');
export const hint = addBox('hint');
const sentence = hint.appendChild(newElement('bdi'));
export const underlines = addBox('underlines');
export const cellFrame = addBox('cell');
export const selectedCells = addBox('cells');
export const caret = addBox('caret');
export const dropCaret = addBox('drop');
export const frame = addBox('frame');
export const outline = addBox('outline');
export const outlineSize = addBox('size', outline);
export const guide = addBox('guide');
export const guideSize = addBox('size', guide);

/// The handles of the frame: which edges each one moves, and the cursor over it.
export const HANDLES = [[-1, -1, 'nwse'], [0, -1, 'ns'], [1, -1, 'nesw'], [-1, 0, 'ew'], [1, 0, 'ew'],
  [-1, 1, 'nesw'], [0, 1, 'ns'], [1, 1, 'nwse']].map(([x, y, cursor]) => {
  const box = addBox('handle', frame);
  box.style.left = (x + 1) * 50 + '%';
  box.style.top = (y + 1) * 50 + '%';
  box.style.cursor = cursor + '-resize';
  return { x, y, box, cursor: box.style.cursor, shown: true };
});

export const EDGES = ['top', 'right', 'bottom', 'left'].map((side) => addBox('edge ' + side, frame));

/// A length that ends on a pixel of the screen, so that thin lines are thin.
function crisp(length) {
  const ratio = window.devicePixelRatio || 1;
  return Math.round(length * ratio) / ratio;
}

const written = new WeakMap();  // of a box: its properties

/// Writes what differs alone: whatever is written has the engine ask for the page's style and layout again.
export function write(box, property, value) {
  let values = written.get(box);
  if (!values) written.set(box, values = {});
  if (values[property] === value) return;
  values[property] = value;
  box.style[property] = value;
}

/// Puts a box over a rectangle of the window. The host stands at the corner of the initial containing
/// block, or of a positioned root.
export function showBox(box, left, top, width, height) {
  const origin = host.getBoundingClientRect();
  const right = crisp(left + width), bottom = crisp(top + height);
  write(box, 'left', crisp(left) - origin.left + 'px');
  write(box, 'top', crisp(top) - origin.top + 'px');
  write(box, 'width', width === undefined ? '' : right - crisp(left) + 'px');
  write(box, 'height', height === undefined ? '' : bottom - crisp(top) + 'px');
  write(box, 'display', 'block');
}

/// What the hint says, in the direction of its own language.
export function setSentence(text) {
  if (sentence.textContent !== text) sentence.textContent = text;
}

export function hide(box) {
  write(box, 'display', 'none');
}

export function showCaretBox(box, at) {
  box.classList.remove('across');
  if (at) showBox(box, at.left, at.top, undefined, at.height);
  else hide(box);
}

/// A caret that lies across a gap between blocks.
export function showGapBox(box, at) {
  showBox(box, at.left, at.top, at.width, 0);
  box.classList.add('across');
}

// The caret goes and comes by an animation of no length that waits half a blink, and at whose end the next one starts. An
// endless one would have the engine draw 60 frames a second as long as the caret is there.
let halfBlink = 0;  // milliseconds; 0: it stays

/// The time in which the caret goes and comes.
export function setBlink(milliseconds) {
  halfBlink = milliseconds / 2;
  restartBlink();
}

export function stopBlink() {
  caret.style.visibility = '';
  caret.classList.remove('half', 'other-half');
}

function waitHalf() {
  const other = caret.classList.contains('half');  // one that goes on under the same name isn't started again
  caret.classList.remove('half', 'other-half');
  caret.classList.add(other ? 'other-half' : 'half');
  caret.style.animationDelay = halfBlink + 'ms';
}

/// A caret that has just moved is seen at once.
export function restartBlink() {
  caret.style.visibility = '';
  if (halfBlink) waitHalf();
  else stopBlink();
}

caret.addEventListener('animationend', () => {
  caret.style.visibility = caret.style.visibility ? '' : 'hidden';
  waitHalf();
});
