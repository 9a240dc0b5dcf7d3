// What the document asks of the page.

import { body, contains, elementAtPoint } from './dom.js';
import { beneath } from './host.js';
import { caretBox } from './geometry.js';
import { elementIdOf, lengthOf, positionAt, positionOf, selectionText } from './positions.js';
import { keepToPage, leaveBar } from './extent.js';
import { factsLater } from './drawing.js';
import { later, tell } from './messages.js';
import { moveByLine } from './table_moves.js';
import { nodes, state } from './state.js';

const MOVES = [['backward', 'line'], ['forward', 'line'], ['backward', 'lineboundary'],
  ['forward', 'lineboundary'], null, null, ['left', 'character'], ['right', 'character']];

/// A move by one window: the page scrolls, and the caret stays where it is in the window.
function movePage(up, node, offset) {
  const box = caretBox(node, offset) || { left: 0, top: 0, height: 0 };
  leaveBar();
  const before = window.scrollY;
  window.scrollBy(0, (up ? -1 : 1) * Math.max(window.innerHeight - 40, 20));
  keepToPage();
  const moved = window.scrollY !== before;
  const inWindow = Math.min(Math.max(box.top + box.height / 2, 2), window.innerHeight - 3);
  return positionAt(Math.max(box.left, 1), moved ? inWindow : up ? 2 : window.innerHeight - 3);
}

function move(kind, nodeId, offset, extend) {
  const node = nodes.get(nodeId);
  if (!node) return null;
  const selection = getSelection();
  offset = Math.min(offset, lengthOf(node));
  if (!MOVES[kind]) return movePage(kind === 4, node, offset);
  const stands = selection.rangeCount && selection.focusNode === node && selection.focusOffset === offset;
  if (!stands) selection.collapse(node, offset);
  const anchorNode = selection.anchorNode, anchorOffset = selection.anchorOffset;
  // To the left and the right a stretch that isn't extended collapses to its edge on that side.
  const alter = (kind >= 6 ? !extend : selection.isCollapsed) ? 'move' : 'extend';
  if (MOVES[kind][1] === 'line') moveByLine(node, offset, alter, MOVES[kind][0]);
  else selection.modify(alter, ...MOVES[kind]);
  // Chromium also goes on after the body.
  if (body() && !contains(body(), selection.focusNode)) {
    selection.setBaseAndExtent(anchorNode, anchorOffset, node, offset);
  }
  state.ownSelection = selectionText();
  return positionOf(selection.focusNode, selection.focusOffset);
}

export function ask(id, type, kind, node, offset, extend, x, y) {
  let position = null, element = 0;
  // Only to hear that the page lives: after the reports that are on their way.
  if (type === 2) return later(() => tell('answer', id, null, 0));
  try {
    if (type === 0) {
      position = move(kind, node, offset, extend);
    } else {
      position = positionAt(x, y);
      element = elementIdOf(beneath(() => elementAtPoint(x, y)));
    }
  } catch (error) {
    position = null;
  }
  tell('answer', id, position, element);
  factsLater();
}
