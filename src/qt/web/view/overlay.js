  // --- the overlay: what editing draws over the page, in a shadow root behind BODY ---

  const host = document.createElement('tvx-host');
  host.style.cssText = 'all:initial!important;position:absolute!important;left:0!important;top:0!important;' +
    'width:0!important;height:0!important;display:block!important;pointer-events:none!important;' +
    'z-index:2147483647!important';
  const shadow = host.attachShadow({ mode: 'closed' });
  const overlaySheet = new CSSStyleSheet();
  overlaySheet.replaceSync(TVX_OVERLAY_SHEET);
  shadow.adoptedStyleSheets = [overlaySheet];

  function drawn(className, parent = shadow) {
    const box = parent.appendChild(document.createElement('div'));
    box.className = className;
    return box;
  }

  // Takes the mouse while something is dragged, so that the cursor is the drag's own.
  const shield = drawn('shield');
  // Shows over an edge that the mouse can take hold of it.
  const grip = drawn('grip');
  const underlines = drawn('underlines');
  const cellFrame = drawn('cell');
  const caret = drawn('caret blink');
  const dropCaret = drawn('drop');
  const frame = drawn('frame');
  const outline = drawn('outline');
  const outlineSize = drawn('size', outline);
  const guide = drawn('guide');
  const guideSize = drawn('size', guide);

  // The handles of the frame: which edges each one moves, and the mouse's look over it.
  const HANDLES = [[-1, -1, 'nwse'], [0, -1, 'ns'], [1, -1, 'nesw'], [-1, 0, 'ew'], [1, 0, 'ew'],
    [-1, 1, 'nesw'], [0, 1, 'ns'], [1, 1, 'nwse']].map(([x, y, cursor]) => {
    const box = drawn('handle', frame);
    box.style.left = (x + 1) * 50 + '%';
    box.style.top = (y + 1) * 50 + '%';
    box.style.cursor = cursor + '-resize';
    return { x, y, box, cursor: box.style.cursor, shown: true };
  });
  const EDGES = ['top', 'right', 'bottom', 'left'].map((side) => drawn('edge ' + side, frame));

  /// Behind BODY, where it shifts no place.
  function keepHost() {
    const root = document.documentElement;
    if (root && (host.parentNode !== root || host.nextSibling)) root.appendChild(host);
  }

  /// A length that ends on a pixel of the screen, so that thin lines are thin.
  function crisp(length) {
    const ratio = window.devicePixelRatio || 1;
    return Math.round(length * ratio) / ratio;
  }

  /// Puts a box over a rectangle of the window. The host stands at the corner of the initial containing
  /// block, or of a positioned root.
  function place(box, left, top, width, height) {
    const origin = host.getBoundingClientRect();
    const right = crisp(left + width), bottom = crisp(top + height);
    box.style.left = crisp(left) - origin.left + 'px';
    box.style.top = crisp(top) - origin.top + 'px';
    if (width !== undefined) box.style.width = right - crisp(left) + 'px';
    if (height !== undefined) box.style.height = bottom - crisp(top) + 'px';
    box.style.display = 'block';
  }

  function hide(box) {
    box.style.display = 'none';
  }

  function placeCaret(box, at) {
    if (!at) return hide(box);
    place(box, at.left, at.top, 0, at.height);
    box.style.width = '';
  }

  /// The caret has the colour of the text around it: what is read there is seen there.
  function drawCaret(at) {
    placeCaret(caret, at);
    if (!at) return;
    const node = getSelection().focusNode;
    caret.style.borderColor = getComputedStyle(node.nodeType === 1 ? node : node.parentElement || host).color;
  }

  /// The frame of what is selected as a whole. Small elements get room between the handles, and no handles
  /// in the middle of their sides.
  function drawFrame() {
    const selected = control && editable ? nodes.get(control) : null;
    const box = selected && selected.getBoundingClientRect();
    if (!box || (box.width === 0 && box.height === 0)) return hide(frame);
    const out = Math.min(box.width, box.height) < 24 ? 5 : 1;
    place(frame, box.left - out, box.top - out, box.width + 2 * out, box.height + 2 * out);
    for (const handle of HANDLES) {
      handle.shown = (handle.x || box.width >= 34) && (handle.y || box.height >= 34);
      handle.box.style.display = handle.shown ? '' : 'none';
    }
    const moves = isMovable(selected);
    for (const edge of EDGES) edge.style.display = moves ? '' : 'none';
  }

  // What an input method is composing.
  let composed = null;  // { node, start, end }

  function drawUnderlines() {
    underlines.textContent = '';
    const text = composed && nodes.get(composed.node);
    if (!text || text.nodeType !== 3) return;
    const range = document.createRange();
    range.setStart(text, Math.min(composed.start, text.length));
    range.setEnd(text, Math.min(composed.end, text.length));
    for (const rect of range.getClientRects()) {
      const line = drawn('underline', underlines);
      line.style.borderColor = getComputedStyle(text.parentElement).color;
      place(line, rect.left, rect.bottom - 2, rect.width, 0);
    }
  }

  function drawOverlay() {
    const selection = getSelection();
    const box = editable && selection.rangeCount && selection.isCollapsed && !control
      ? caretBox(selection.focusNode, selection.focusOffset) : null;
    drawCaret(focused ? box : null);
    drawFrame();
    drawCell();
    drawUnderlines();
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
