// The page's side of the view. It runs in an isolated script world: nothing here is seen by the page, and
// nothing that the page names can stand in the way, since all state lives in this closure. The page's tree
// is made from the operations that come down; what the mouse did and where things are goes up.
(function () {
  'use strict';

  // Once a page: the host may speak to one page twice when loads overtake each other.
  if (Object.prototype.hasOwnProperty.call(globalThis, 'tvxView')) return;
  Object.defineProperty(globalThis, 'tvxView', { value: true });

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

  // --- the overlay: caret, frame of the selected control ---

  const host = document.createElement('tvx-host');
  host.style.cssText = 'all:initial!important;position:absolute!important;left:0!important;top:0!important;' +
    'width:0!important;height:0!important;display:block!important;pointer-events:none!important;' +
    'z-index:2147483647!important';
  const shadow = host.attachShadow({ mode: 'closed' });
  const overlaySheet = new CSSStyleSheet();
  overlaySheet.replaceSync(
    '@media print { div { display: none !important } }' +
    '.caret { position: absolute; width: 0; border-left: 2px solid #000; margin-left: -1px; display: none;' +
    ' mix-blend-mode: difference; border-color: #fff; }' +
    '.blink { animation: blink 1.06s step-end infinite }' +
    '@keyframes blink { 50% { visibility: hidden } }' +
    '.frame { position: absolute; display: none; box-sizing: border-box; border: 1px solid #2a6fdb }' +
    '.frame i { position: absolute; width: 7px; height: 7px; box-sizing: border-box; background: #fff;' +
    ' border: 1px solid #2a6fdb; transform: translate(-4px, -4px) }');
  shadow.adoptedStyleSheets = [overlaySheet];
  const caret = shadow.appendChild(document.createElement('div'));
  caret.className = 'caret blink';
  const frame = shadow.appendChild(document.createElement('div'));
  frame.className = 'frame';
  for (const [x, y] of [[0, 0], [50, 0], [100, 0], [0, 50], [100, 50], [0, 100], [50, 100], [100, 100]]) {
    const handle = frame.appendChild(document.createElement('i'));
    handle.style.left = x + '%';
    handle.style.top = y + '%';
  }

  /// Behind BODY, where it shifts no place.
  function keepHost() {
    const root = document.documentElement;
    if (root && (host.parentNode !== root || host.nextSibling)) root.appendChild(host);
  }

  function lineHeight(style) {
    const height = parseFloat(style.lineHeight);
    return height > 0 ? height : Math.round(parseFloat(style.fontSize) * 1.2);
  }

  /// The box of a caret in an element that has nothing to measure by.
  function emptyBox(element) {
    const box = element.getBoundingClientRect();
    const style = getComputedStyle(element);
    const left = box.left + element.clientLeft + parseFloat(style.paddingLeft || 0);
    const right = box.right - parseFloat(style.paddingRight || 0) - parseFloat(style.borderRightWidth || 0);
    const top = box.top + element.clientTop + parseFloat(style.paddingTop || 0);
    const align = style.textAlign;
    const x = /center/.test(align) ? (left + right) / 2
      : /right|end/.test(align) && style.direction !== 'rtl' ? right
      : style.direction === 'rtl' && !/left/.test(align) ? right : left;
    return { left: x, top: top, height: lineHeight(style) };
  }

  /// Where a caret stands: left, top and height in the viewport; null where nothing is laid out.
  function caretBox(node, offset) {
    const range = document.createRange();
    try {
      range.setStart(node, offset);
    } catch (error) {
      return null;
    }
    const rects = range.getClientRects();
    if (rects.length) {
      const rect = rects[rects.length - 1];
      if (rect.height > 0) return { left: rect.left, top: rect.top, height: rect.height };
    }
    if (node.nodeType !== 1) {
      return node.parentElement ? emptyBox(node.parentElement) : null;
    }
    const behind = node.childNodes[offset];
    const before = node.childNodes[offset - 1];
    if (behind && behind.nodeType === 3 && behind.length) return caretBox(behind, 0);
    if (behind && behind.nodeType === 1 && behind !== host) {
      const rect = behind.getClientRects()[0];
      if (rect && rect.height > 0) return { left: rect.left, top: rect.top, height: rect.height };
    }
    if (before && before.nodeType === 3 && before.length) return caretBox(before, before.length);
    if (before && before.nodeType === 1 && before.nodeName !== 'BR') {
      const all = before.getClientRects();
      const rect = all[all.length - 1];
      if (rect && rect.height > 0) return { left: rect.right, top: rect.top, height: rect.height };
    }
    if (before && before.nodeName === 'BR') {
      const rect = before.getClientRects()[0];
      const box = emptyBox(node);
      if (rect) return { left: box.left, top: rect.bottom, height: box.height };
    }
    return emptyBox(node);
  }

  function drawOverlay() {
    const selection = getSelection();
    const box = editable && selection.rangeCount && selection.isCollapsed && !control
      ? caretBox(selection.focusNode, selection.focusOffset) : null;
    // The host stands at the corner of the initial containing block, or of a positioned root.
    const origin = host.getBoundingClientRect();
    if (box) {
      caret.style.left = (box.left - origin.left) + 'px';
      caret.style.top = (box.top - origin.top) + 'px';
      caret.style.height = box.height + 'px';
    }
    caret.style.display = box && focused ? 'block' : 'none';
    const selected = control ? nodes.get(control) : null;
    if (selected) {
      const rect = selected.getBoundingClientRect();
      frame.style.left = (rect.left - origin.left) + 'px';
      frame.style.top = (rect.top - origin.top) + 'px';
      frame.style.width = rect.width + 'px';
      frame.style.height = rect.height + 'px';
    }
    frame.style.display = selected ? 'block' : 'none';
    return box;
  }

  /// A caret that has just moved is seen at once.
  function restartBlink() {
    caret.classList.remove('blink');
    void caret.offsetWidth;
    caret.classList.add('blink');
  }

  // --- facts ---

  let lastFacts = '';
  let factsWaiting = false;

  function reportFacts() {
    factsWaiting = false;
    const selection = getSelection();
    let box = drawOverlay();
    if (!box && control && nodes.has(control)) {
      const rect = nodes.get(control).getBoundingClientRect();
      box = { left: rect.left, top: rect.top, height: rect.height };
    }
    if (!box && selection.rangeCount) box = caretBox(selection.focusNode, selection.focusOffset);
    const facts = [box ? box.left : 0, box ? box.top : 0, box ? box.height : 0,
      window.scrollX, window.scrollY, window.innerWidth, window.innerHeight].map(Math.round);
    const text = facts.join();
    if (text === lastFacts) return;
    lastFacts = text;
    tell('facts', ...facts);
  }

  function factsLater() {
    if (factsWaiting) return;
    factsWaiting = true;
    later(reportFacts);
  }

  // --- patches ---

  function known(id) {
    const node = nodes.get(id);
    if (!node) throw new Error('unknown node ' + id);
    return node;
  }

  function put(node, parentId, beforeId) {
    const parent = parentId ? known(parentId) : document;
    let before = beforeId ? known(beforeId) : null;
    if (!before && host.parentNode === parent) before = host;
    parent.insertBefore(node, before);
  }

  function remember(id, node) {
    nodes.set(id, node);
    ids.set(node, id);
    return node;
  }

  function setAttribute(element, name, value, space) {
    if (space) {
      element.setAttributeNS(ATTRIBUTE_NAMESPACES[space], name, value);
    } else {
      element.setAttribute(name, value);
    }
  }

  function makeElement(id, parent, before, name, space, attributes) {
    const element = space ? document.createElementNS(NAMESPACES[space], name) : document.createElement(name);
    for (let i = 0; i < attributes.length; i += 3) {
      try {
        setAttribute(element, attributes[i], attributes[i + 1], attributes[i + 2]);
      } catch (error) {
        // One attribute less is no reason to lose the element.
      }
    }
    remember(id, element);
    put(element, parent, before);
  }

  function forget(root) {
    root.remove();
    const walker = document.createTreeWalker(root);
    for (let node = root; node; node = walker.nextNode()) {
      const id = ids.get(node);
      if (id !== undefined && nodes.get(id) === node) nodes.delete(id);
    }
  }

  const operations = {
    e: makeElement,
    t: (id, parent, before, text) => put(remember(id, document.createTextNode(text)), parent, before),
    c: (id, parent, before, text) => put(remember(id, document.createComment(text)), parent, before),
    d: (id) => known(id).remove(),
    p: (id, parent, before) => put(known(id), parent, before),
    f: (id) => forget(known(id)),
    x: (id, offset, length, text) => known(id).replaceData(offset, length, text),
    a: (id, name, value, space) => {
      const element = known(id);
      try {
        setAttribute(element, name, value, space);
      } catch (error) {
        // As above.
      }
    },
    n: (id, name) => known(id).removeAttribute(name),
  };

  function applyPatch(number, list) {
    if (!started) {
      started = true;
      document.documentElement.remove();
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
    seen = number;
    if (document.documentElement) document.documentElement.getBoundingClientRect();
    tell('done', number);
    factsLater();
  }

  // --- places ---

  /// A place in the document's terms: null where the document has none.
  function placeOf(node, offset) {
    while (node && !ids.has(node)) {
      const parent = node.parentNode;
      if (!parent || parent === document) return null;
      offset = Array.prototype.indexOf.call(parent.childNodes, node);
      node = parent;
    }
    if (!node) return null;
    if (node.nodeType === 1 && host.parentNode === node) offset = Math.min(offset, node.childNodes.length - 1);
    return [ids.get(node), offset];
  }

  function elementAt(target) {
    let node = target && target.nodeType === 1 ? target : target && target.parentNode;
    while (node && !ids.has(node)) node = node.parentNode;
    return node ? ids.get(node) : 0;
  }

  function placeAt(x, y) {
    const range = document.caretRangeFromPoint(x, y);
    if (!range) return null;
    const body = document.body;
    // Beside the body there is no place for a caret: its end is meant.
    if (body && !body.contains(range.startContainer)) return placeOf(body, body.childNodes.length);
    return placeOf(range.startContainer, range.startOffset);
  }

  function nativeSelection() {
    const selection = getSelection();
    if (!selection.rangeCount) return [null, null];
    return [placeOf(selection.anchorNode, selection.anchorOffset),
      placeOf(selection.focusNode, selection.focusOffset)];
  }

  function lengthOf(node) {
    return node.nodeType === 1 ? node.childNodes.length - (host.parentNode === node ? 1 : 0) : node.length;
  }

  // --- selection ---

  let ownSelection = '';  // the native selection as it was last set or reported

  function selectionText() {
    const selection = getSelection();
    if (!selection.rangeCount) return '';
    const key = (node, offset) => (ids.get(node) || 0) + ':' + offset;
    return key(selection.anchorNode, selection.anchorOffset) + ' ' +
      key(selection.focusNode, selection.focusOffset);
  }

  function select(type, anchor, anchorOffset, focus, focusOffset, selected, reveal) {
    const selection = getSelection();
    control = type === 2 ? selected : 0;
    const anchorNode = nodes.get(anchor), focusNode = nodes.get(focus);
    if (type !== 1 || !anchorNode || !focusNode) {
      selection.removeAllRanges();
    } else {
      anchorOffset = Math.min(anchorOffset, lengthOf(anchorNode));
      focusOffset = Math.min(focusOffset, lengthOf(focusNode));
      // Setting what is there would lose the column that Up and Down aim at.
      if (selection.anchorNode !== anchorNode || selection.anchorOffset !== anchorOffset ||
          selection.focusNode !== focusNode || selection.focusOffset !== focusOffset) {
        selection.setBaseAndExtent(anchorNode, anchorOffset, focusNode, focusOffset);
      }
    }
    ownSelection = selectionText();
    restartBlink();
    if (reveal) revealFocus();
    factsLater();
  }

  function revealFocus() {
    const selection = getSelection();
    const selected = control ? nodes.get(control) : null;
    if (selected) {
      selected.scrollIntoView({ block: 'nearest', inline: 'nearest' });
      return;
    }
    if (!selection.rangeCount) return;
    let box = caretBox(selection.focusNode, selection.focusOffset);
    if (!box) return;
    const inside = (box) => box.top >= 0 && box.top + box.height <= window.innerHeight &&
      box.left >= 0 && box.left <= window.innerWidth;
    if (inside(box)) return;
    const element = selection.focusNode.nodeType === 1 ? selection.focusNode : selection.focusNode.parentElement;
    if (element && element.getBoundingClientRect().height < window.innerHeight / 2) {
      element.scrollIntoView({ block: 'nearest' });
      box = caretBox(selection.focusNode, selection.focusOffset);
      if (!box || inside(box)) return;
    }
    const margin = 4;
    let down = 0, right = 0;
    if (box.top < 0) down = box.top - margin;
    if (box.top + box.height > window.innerHeight) down = box.top + box.height - window.innerHeight + margin;
    if (box.left < 0) right = box.left - 20;
    if (box.left > window.innerWidth) right = box.left - window.innerWidth + 20;
    window.scrollBy(right, down);
  }

  // --- questions ---

  const MOVES = [['backward', 'line'], ['forward', 'line'], ['backward', 'lineboundary'],
    ['forward', 'lineboundary'], null, null, ['left', 'character'], ['right', 'character']];

  /// A move by one window: the page scrolls, and the caret keeps its place in the window.
  function movePage(up, node, offset) {
    const box = caretBox(node, offset) || { left: 0, top: 0, height: 0 };
    const before = window.scrollY;
    window.scrollBy(0, (up ? -1 : 1) * Math.max(window.innerHeight - 40, 20));
    const moved = window.scrollY !== before;
    const inWindow = Math.min(Math.max(box.top + box.height / 2, 2), window.innerHeight - 3);
    return placeAt(Math.max(box.left, 1), moved ? inWindow : up ? 2 : window.innerHeight - 3);
  }

  function move(kind, nodeId, offset) {
    const node = nodes.get(nodeId);
    if (!node) return null;
    const selection = getSelection();
    offset = Math.min(offset, lengthOf(node));
    if (!MOVES[kind]) return movePage(kind === 4, node, offset);
    const stands = selection.rangeCount && selection.focusNode === node && selection.focusOffset === offset;
    if (!stands) selection.collapse(node, offset);
    const anchorNode = selection.anchorNode, anchorOffset = selection.anchorOffset;
    selection.modify(selection.isCollapsed ? 'move' : 'extend', ...MOVES[kind]);
    // From the last line Chromium goes on behind the body: there is no further line.
    if (document.body && !document.body.contains(selection.focusNode)) {
      selection.setBaseAndExtent(anchorNode, anchorOffset, node, offset);
    }
    ownSelection = selectionText();
    return placeOf(selection.focusNode, selection.focusOffset);
  }

  function ask(id, type, kind, node, offset, x, y) {
    let place = null, element = 0;
    try {
      if (type === 0) {
        place = move(kind, node, offset);
      } else {
        place = placeAt(x, y);
        element = elementAt(document.elementFromPoint(x, y));
      }
    } catch (error) {
      place = null;
    }
    tell('answer', id, place, element);
  }

  // --- the mouse ---

  const MODIFIERS = (event) => (event.shiftKey ? 1 : 0) | (event.ctrlKey ? 2 : 0) | (event.altKey ? 4 : 0);
  const BUTTONS = [1, 4, 2];
  const WHOLE = 'img,input,select,textarea,button,video,audio,canvas,hr,meter,progress,tvx-box,svg,summary';
  let pressed = false;  // a native selection is being drawn, once the mouse moves
  let dragged = false;
  let pressX = 0, pressY = 0;
  let clicks = [];

  /// Only what the mouse really drew is told as a selection: between a press and its tale the document may
  /// have set another.
  function noteDrag(event) {
    if (pressed && Math.hypot(event.clientX - pressX, event.clientY - pressY) > 3) dragged = true;
  }

  function mouseMessage(type, event, prevented) {
    const [anchor, focus] = prevented ? [null, null] : nativeSelection();
    return ['mouse', type, BUTTONS[event.button] || 1, Math.round(event.clientX), Math.round(event.clientY),
      MODIFIERS(event), elementAt(event.target), placeAt(event.clientX, event.clientY), anchor, focus];
  }

  function insideSelection(event) {
    const selection = getSelection();
    if (!selection.rangeCount || selection.isCollapsed) return false;
    const rects = selection.getRangeAt(0).getClientRects();
    for (const rect of rects) {
      if (event.clientX >= rect.left && event.clientX <= rect.right &&
          event.clientY >= rect.top && event.clientY <= rect.bottom) return true;
    }
    return false;
  }

  function listen(type, handler) {
    window.addEventListener(type, (event) => {
      if (event.isTrusted) handler(event);
    }, { capture: true, passive: false });
  }

  function prevent(event) {
    event.preventDefault();
    event.stopImmediatePropagation();
  }

  listen('mousedown', (event) => {
    const onWhole = event.target.nodeType === 1 && event.target.closest(WHOLE);
    const prevented = !editable || onWhole || event.button !== 0 ||
      (event.detail < 2 && !event.shiftKey && insideSelection(event));
    // The scroll bars stay the page's.
    const onScrollBar = event.target === document.documentElement &&
      (event.clientX >= document.documentElement.clientWidth ||
       event.clientY >= document.documentElement.clientHeight);
    if (prevented && !onScrollBar) event.preventDefault();
    pressed = event.button === 0 && !prevented;
    dragged = false;
    pressX = event.clientX;
    pressY = event.clientY;
    control = 0;
    const selects = !prevented && (event.detail > 1 || event.shiftKey);
    // The native selection moves behind the listeners.
    later(() => {
      ownSelection = selectionText();
      tell(...mouseMessage(0, event, !selects));
      reportFacts();
    });
  });

  listen('mouseup', (event) => {
    noteDrag(event);
    const drawn = pressed && dragged;
    pressed = false;
    later(() => {
      ownSelection = selectionText();
      tell(...mouseMessage(1, event, !drawn));
      for (const [type, click] of clicks) tell(...mouseMessage(type, click, true));
      clicks = [];
      reportFacts();
    });
  });

  listen('mousemove', noteDrag);

  listen('click', (event) => {
    clicks.push([2, event]);
    prevent(event);
  });
  listen('dblclick', (event) => {
    clicks.push([3, event]);
    prevent(event);
  });
  listen('wheel', (event) => {
    if (event.ctrlKey) event.preventDefault();
  });
  for (const type of ['auxclick', 'contextmenu', 'submit', 'reset', 'toggle', 'dragstart', 'dragenter',
    'dragover', 'drop', 'paste', 'copy', 'cut', 'beforeinput', 'keydown', 'keypress', 'keyup', 'selectstart']) {
    listen(type, (event) => {
      if (type !== 'selectstart' || !editable) prevent(event);
    });
  }

  document.addEventListener('selectionchange', () => {
    factsLater();
    if (!pressed || !dragged) return;
    const now = selectionText();
    if (now === ownSelection) return;
    ownSelection = now;
    const [anchor, focus] = nativeSelection();
    if (anchor && focus) tell('select', anchor, focus);
  });

  window.addEventListener('scroll', factsLater, true);
  window.addEventListener('resize', factsLater);
  window.addEventListener('load', factsLater, true);  // an image that came moves what is below it

  // --- commands from above ---

  const commands = {
    patch: applyPatch,
    select: select,
    ask: ask,
    mode: (isEditable) => {
      editable = isEditable;
      factsLater();
      drawOverlay();
    },
    focus: (isFocused) => {
      focused = isFocused;
      drawOverlay();
      restartBlink();
    },
    scroll: (x, y) => window.scrollTo(x, y),
    beat: () => tell('beat'),
  };

  function begin(css) {
    const sheet = new CSSStyleSheet();
    sheet.replaceSync(css);
    document.adoptedStyleSheets = [sheet];
  }

  new QWebChannel(qt.webChannelTransport, (channel) => {
    bridge = channel.objects.bridge;
    bridge.down.connect((text) => {
      const [forPage, command, ...rest] = JSON.parse(text);
      if (forPage === page) commands[command](...rest);
    });
    begin(TVX_SHEET);
    tell('ready');
  });
})();
