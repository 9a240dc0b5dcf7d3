// What is drawn over the page, and what is told of it.

import { boxOf, elementOf, matches, newRange, parentElementOf, typeOf } from './dom.js';
import { EDGES, HANDLES, caret, cellFrame, dropCaret, frame, guide, hide, hint, outline, selectedCells, showBox,
  showCaretBox, showGapBox, underlines, write } from './boxes.js';
import { addBox, host } from './host.js';
import { caretBox } from './geometry.js';
import { drawCell } from './current_cell.js';
import { drawHint } from './hint.js';
import { drawSelectedCells } from './selected_cells.js';
import { gapBox } from './gap_caret.js';
import { isMovable } from './wholes.js';
import { later, tell } from './messages.js';
import { nodes, state } from './state.js';

/// The caret has the colour of the text around it: what is read there is seen there.
function drawCaret(at) {
  const { focusNode, focusOffset } = getSelection();
  const gap = at && gapBox(focusNode, focusOffset);
  const colour = at && getComputedStyle(elementOf(focusNode) || host).color;  // asked before anything is written
  if (gap) showGapBox(caret, gap);
  else showCaretBox(caret, at);
  if (at) write(caret, 'borderColor', colour);
}

/// The frame of what is selected as a whole. Small elements get room between the handles, and no handles
/// in the middle of their sides. What stands for a hidden field has no size of its own.
function drawFrame() {
  const selected = state.control && state.editable ? nodes.get(state.control) : null;
  const box = selected && boxOf(selected);
  if (!box || (box.width === 0 && box.height === 0)) return hide(frame);
  const out = Math.min(box.width, box.height) < 24 ? 5 : 1;
  showBox(frame, box.left - out, box.top - out, box.width + 2 * out, box.height + 2 * out);
  const sized = !matches(selected, '[tvx-hidden]');
  for (const handle of HANDLES) {
    handle.shown = sized && (handle.x || box.width >= 34) && (handle.y || box.height >= 34);
    write(handle.box, 'display', handle.shown ? '' : 'none');
  }
  const moves = isMovable(selected);
  for (const edge of EDGES) write(edge, 'display', moves ? '' : 'none');
}

function drawUnderlines() {
  underlines.textContent = '';
  const { composed } = state;
  const text = composed && nodes.get(composed.node);
  if (!text || typeOf(text) !== 3) return;
  const range = newRange();
  range.setStart(text, Math.min(composed.start, text.length));
  range.setEnd(text, Math.min(composed.end, text.length));
  for (const rect of range.getClientRects()) {
    const line = addBox('underline', underlines);
    line.style.borderColor = getComputedStyle(parentElementOf(text)).color;
    showBox(line, rect.left, rect.bottom - 2, rect.width, 0);
  }
}

/// Draws all, and answers the box of the caret where there is one.
export function drawOverlay() {
  const selection = getSelection();
  const box = state.editable && selection.rangeCount && selection.isCollapsed && !state.control
    ? caretBox(selection.focusNode, selection.focusOffset) : null;
  drawCaret(state.focused ? box : null);
  drawFrame();
  drawCell();
  drawSelectedCells();
  drawUnderlines();
  drawHint();
  return box;
}

/// Boxes of the window by their names, and whether the frame's element can be moved: for tests.
export function drawnBoxes() {
  const shown = {};
  for (const [name, box] of Object.entries({ caret, frame, outline, guide, drop: dropCaret, cell: cellFrame,
    hint })) {
    if (box.style.display !== 'block') continue;
    const rect = box.getBoundingClientRect();
    shown[name] = [rect.left, rect.top, rect.width, rect.height].map(Math.round);
  }
  shown.caretIsSeen = Boolean(shown.caret) && caret.style.visibility === '';
  if (shown.hint) shown.sentence = hint.textContent;
  shown.underlined = underlines.childElementCount;
  shown.chosen = selectedCells.childElementCount;
  shown.movable = Boolean(shown.frame && isMovable(nodes.get(state.control)));
  return shown;
}

// --- facts ---

let lastFacts = '';
let factsWaiting = false;

export function reportFacts() {
  factsWaiting = false;
  const selection = getSelection();
  const { scrollX, scrollY, innerWidth, innerHeight } = window;  // before the drawing, which would have it laid out again
  let at = drawOverlay();
  if (!at && state.control && nodes.has(state.control)) {
    const rect = boxOf(nodes.get(state.control));
    at = { left: rect.left, top: rect.top, height: rect.height };
  }
  if (!at && selection.rangeCount) at = caretBox(selection.focusNode, selection.focusOffset);
  const facts = [at ? at.left : 0, at ? at.top : 0, at ? at.height : 0,
    scrollX, scrollY, innerWidth, innerHeight].map(Math.round);
  const text = facts.join();
  if (text === lastFacts) return;
  lastFacts = text;
  tell('facts', ...facts);
}

export function factsLater() {
  if (factsWaiting) return;
  factsWaiting = true;
  later(reportWaitingFacts);
}

/// At once, what would be reported after the present task.
export function reportWaitingFacts() {
  if (factsWaiting) reportFacts();
}
