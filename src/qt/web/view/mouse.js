  // --- the mouse ---

  const MODIFIERS = (event) => (event.shiftKey ? 1 : 0) | (event.ctrlKey ? 2 : 0) | (event.altKey ? 4 : 0);
  const BUTTONS = [1, 4, 2];
  let pressed = false;  // a native selection is being drawn, once the mouse moves
  let dragged = false;
  let pressX = 0, pressY = 0;
  let clicks = [];
  let mouseNumber = 0;  // of the last press or release

  /// Only what the mouse really drew is told as a selection: between a press and its tale the document may
  /// have set another.
  function noteDrag(event) {
    if (pressed && !(event.buttons & 1) && event.type === 'mousemove') pressed = false;  // its end was elsewhere
    if (pressed && Math.hypot(event.clientX - pressX, event.clientY - pressY) > 3) dragged = true;
  }

  /// `edge`: the element that is meant as a whole. `held`: the press was on selected text or on the edge of a
  /// column: what is selected stays until the release, as a drag may follow.
  function mouseMessage(type, number, event, target, prevented, edge, held) {
    const [anchor, focus] = prevented ? [null, null] : nativeSelection();
    return ['mouse', type, BUTTONS[event.button] || 1, Math.round(event.clientX), Math.round(event.clientY),
      MODIFIERS(event), elementAt(target), placeAt(event.clientX, event.clientY), anchor, focus,
      edge ? ids.get(edge) || 0 : 0, Boolean(held), number];
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
    const number = ++mouseNumber;
    const target = targetOf(event);
    const isLeft = event.button === 0;
    const takes = editable && isLeft;
    let handle = takes ? handleAt(event.clientX, event.clientY) : null;
    const edge = handle ? nodes.get(control)
      : editable && target ? edgeAt(target, event.clientX, event.clientY) : null;
    if (takes && !handle && edge && edge.nodeName === 'TABLE') {
      handle = tableHandleAt(edge, event.clientX, event.clientY);
    }
    const single = isLeft && event.detail < 2 && !event.shiftKey;
    const column = editable && single && !edge ? takeColumnEdge(event.clientX, event.clientY) : null;
    const whole = edge || (!column && target && target.closest(WHOLE));
    const held = column || (!whole && single && insideSelection(event));
    const prevented = !editable || whole || !isLeft || held || (target && target.closest('summary'));
    // The scroll bars stay the page's.
    const onScrollBar = target === document.documentElement &&
      (event.clientX >= document.documentElement.clientWidth ||
       event.clientY >= document.documentElement.clientHeight);
    if (prevented && !onScrollBar) event.preventDefault();
    pressed = isLeft && !prevented;
    dragged = false;
    pressX = event.clientX;
    pressY = event.clientY;
    endDrag();
    if (takes && !onScrollBar && (whole || held)) armDrag(event, whole, handle, column);
    hide(grip);
    if (!whole || ids.get(whole) !== control) {
      control = 0;
      hide(frame);
    }
    const selects = !prevented && (event.detail > 1 || event.shiftKey);
    // The native selection moves behind the listeners.
    later(() => {
      ownSelection = selectionText();
      tell(...mouseMessage(0, number, event, column ? column.cell : target, !selects, edge, held));
      reportFacts();
    });
  });

  listen('mouseup', (event) => {
    const number = ++mouseNumber;
    noteDrag(event);
    const target = targetOf(event);
    const drawn = pressed && dragged;
    pressed = false;
    const dropped = event.button === 0 && dropDrag(event);
    later(() => {
      ownSelection = selectionText();
      tell(...mouseMessage(1, number, event, target, !drawn));
      // What ends a drag is no click.
      if (!dropped) for (const [type, click, on] of clicks) tell(...mouseMessage(type, number, click, on, !drawn));
      clicks = [];
      reportFacts();
    });
  });

  listen('mousemove', (event) => {
    noteDrag(event);
    followDrag(event);
    showGrip(event);
  });

  listen('click', (event) => {
    clicks.push([2, event, targetOf(event)]);
    prevent(event);
  });
  listen('dblclick', (event) => {
    clicks.push([3, event, targetOf(event)]);
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
