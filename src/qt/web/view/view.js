// The page's side of the view. It runs in an isolated script world: nothing here is seen by the page, and nothing that
// the page names can stand in the way. The page's tree is made from the operations that come down; what the mouse did
// and where things are goes up.
//
// The modules of this folder are joined into one script when the program is built (cmake/join_modules.cpp).

import { applyPatch } from './patches.js';
import { ask } from './questions.js';
import { autoscroll, endDrag, showDropCaret } from './drag.js';
import { dropCaret, hide, setBlink } from './boxes.js';
import { connectBridge, later, tell } from './messages.js';
import { cover, coverSheet } from './cover.js';
import { listenToScrolling, shiftSheet, showAsked } from './extent.js';
import { drawOverlay, drawnBoxes, factsLater, reportWaitingFacts } from './drawing.js';
import { paintFarRoomsApart, paintWaitingRooms } from './far_rooms.js';
import { lineAround } from './lines.js';
import { listenToMouse } from './mouse.js';
import { mark, markedTexts } from './marks.js';
import { markForPaper, unmarkForPaper } from './paper.js';
import { nodes, state } from './state.js';
import { allowRooms, listenToStyles, roomCounts } from './rooms.js';
import { scrollIntoView } from './dom.js';
import { keepInSight, select } from './selection.js';
import { showUnderWay } from './under_way.js';
import { watchPictures } from './pictures.js';

const PARTS = 1e6;  // of a document

const commands = {
  patch: (number, list, parts, hasEnd) => {
    applyPatch(number, list, parts / PARTS, hasEnd);
    factsLater();
  },
  select: select,
  mark: mark,
  ask: ask,
  mode: (isEditable, placesFreely, underWay) => {
    state.editable = isEditable;
    state.freePlacement = placesFreely;
    showUnderWay(underWay);
    factsLater();
    drawOverlay();
  },
  focus: (isFocused, flashTime) => {
    state.focused = isFocused;
    drawOverlay();
    setBlink(flashTime);
  },
  hint: (text) => {
    state.hint = text;
    drawOverlay();
  },
  endDrag: endDrag,
  // Something from another program hovers over the window, or has left it.
  hover: (x, y) => {
    autoscroll(x, y);
    showDropCaret(x, y);
  },
  leave: () => hide(dropCaret),
  scroll: (x, y) => window.scrollTo(x, y),
  reveal: (id, atTop) => {
    const node = nodes.get(id);
    if (node instanceof Element && !showAsked(node, atTop)) scrollIntoView(node, atTop);
    factsLater();
  },
  cover: (top, bottom) => {
    cover(top, bottom);
    factsLater();
  },
  beat: () => tell('beat'),
};

/// For who looks from outside of this script, in this world alone.
const view = { drawn: drawnBoxes, marked: (kind = 0) => markedTexts(kind), rooms: roomCounts, allowRooms, lineAround,
  longestStall: 0, markForPaper, unmarkForPaper };

/// What one command fails at is told, and keeps no other from being followed.
function follow(command, rest) {
  try {
    commands[command](...rest);
  } catch (error) {
    later(() => {
      throw error;
    });
  }
}

/// All commands of a turn.
function run(text) {
  const since = state.since = performance.now();
  for (const [forPage, command, ...rest] of JSON.parse(text)) {
    if (forPage === state.page) follow(command, rest);
  }
  // The caret's box and what the page has scrolled to go up with what else there is to say, not a frame later.
  reportWaitingFacts();
  // After that, as it has the engine lay out anew what changes.
  paintWaitingRooms();
  // Until the page gets to its next task nothing else is answered, no key and no click.
  later(() => {
    view.longestStall = Math.max(view.longestStall, performance.now() - since);
  });
}

Object.defineProperty(globalThis, 'tvxView', { value: view });
listenToMouse();
listenToStyles(paintFarRoomsApart);
listenToScrolling();
window.addEventListener('scroll', paintFarRoomsApart, true);
window.addEventListener('resize', paintFarRoomsApart);
window.addEventListener('resize', keepInSight);
watchPictures();
const editingSheet = new CSSStyleSheet();
editingSheet.replaceSync(TVX_SHEETS.editing);
document.adoptedStyleSheets = [editingSheet, coverSheet, shiftSheet];

new QWebChannel(qt.webChannelTransport, (channel) => {
  connectBridge(channel.objects.bridge);
  channel.objects.bridge.down.connect(run);
  tell('ready');
});
