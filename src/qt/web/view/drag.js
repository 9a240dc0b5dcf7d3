  // --- what is taken as a whole, and what a drag does with it ---

  const WHOLE = 'img,input,select,textarea,button,video,audio,canvas,hr,meter,progress,marquee,tvx-box,svg';
  const REPLACED = 'img,video,canvas,svg';  // their height follows their width: both are set
  const DRAG_SIZE = 0, DRAG_MOVE = 1, DRAG_CONTENT = 2, DRAG_COLUMN = 3;
  const DRAG_BEGIN = 0, DRAG_DROP = 1;
  const FAR_ENOUGH = 4;  // before that a press with a trembling hand is a click

  function isPositioned(element) {
    return element.style && element.style.position === 'absolute';
  }

  function isMovable(element) {
    return freePlacement && isPositioned(element);
  }

  function isMediaLike(element) {
    return element.matches(REPLACED);
  }

  function nearEdge(box, x, y) {
    const inside = 3, outside = 4;
    const within = (grow) => x >= box.left - grow && x <= box.right + grow && y >= box.top - grow &&
      y <= box.bottom + grow;
    return within(outside) && !within(-inside);
  }

  /// The table or the positioned element whose edge is at a point. They are meant as wholes there, where
  /// inside of them is a place for a caret.
  function edgeAt(target, x, y) {
    const found = (element) => nodes.has(ids.get(element)) && nearEdge(element.getBoundingClientRect(), x, y);
    const candidates = [];
    for (let element = target; element && element.nodeType === 1; element = element.parentElement) {
      candidates.push(element);
    }
    // Right outside of its edge an element isn't the target yet.
    for (const [dx, dy] of [[4, 0], [-4, 0], [0, 4], [0, -4], [4, -4], [-4, -4]]) {
      const near = beneath(() => document.elementFromPoint(x + dx, y + dy));
      const whole = near && near.closest('table');
      if (whole) candidates.push(whole);
      for (let element = near; element; element = element.parentElement) {
        if (isPositioned(element)) candidates.push(element);
      }
    }
    return candidates.find((element) => (element.nodeName === 'TABLE' || isPositioned(element)) &&
      element !== document.body && found(element)) || null;
  }

  function handleAt(x, y) {
    if (!control || frame.style.display === 'none') return null;
    return HANDLES.find((handle) => {
      if (!handle.shown) return false;
      const box = handle.box.getBoundingClientRect();
      return x >= box.left - 1 && x <= box.right + 1 && y >= box.top - 1 && y <= box.bottom + 1;
    }) || null;
  }

  // From the press that may begin a drag to its release.
  let drag = null;  // { type, element, handle, column, x, y, box, begun }

  /// What the press of the left button on `whole`, a handle of it, the edge of a column, or the selected text
  /// may become.
  function armDrag(event, whole, handle, column) {
    drag = {
      type: column ? DRAG_COLUMN : handle ? DRAG_SIZE : DRAG_CONTENT,
      element: column ? column.before : whole, handle, column, begun: false,
      x: event.clientX + window.scrollX, y: event.clientY + window.scrollY,
    };
  }

  function px(text) {
    return parseFloat(text) || 0;
  }

  /// What an element's border and padding add to the width and height that it is given.
  function extraOf(style) {
    if (style.boxSizing === 'border-box') return { width: 0, height: 0 };
    return {
      width: px(style.paddingLeft) + px(style.paddingRight) + px(style.borderLeftWidth) + px(style.borderRightWidth),
      height: px(style.paddingTop) + px(style.paddingBottom) + px(style.borderTopWidth) + px(style.borderBottomWidth),
    };
  }

  function beginDrag(event) {
    drag.begun = true;
    if (drag.type === DRAG_CONTENT && drag.element && isMovable(drag.element)) drag.type = DRAG_MOVE;
    if (drag.element) {
      const box = drag.element.getBoundingClientRect();
      drag.box = { left: box.left + window.scrollX, top: box.top + window.scrollY, width: box.width, height: box.height };
    }
    shield.style.cursor = drag.type === DRAG_SIZE ? drag.handle.cursor : drag.column ? 'col-resize'
      : drag.type === DRAG_MOVE ? 'move' : event.ctrlKey ? 'copy' : 'default';
    shield.style.display = 'block';
    caret.classList.remove('blink');
    tellDrag(DRAG_BEGIN, event, {});
  }

  function tellDrag(phase, event, result) {
    const { width = null, height = null, left = null, top = null, at = null, was = null, edge = null } = result;
    tell('drag', phase, drag.type, drag.element ? ids.get(drag.element) || 0 : 0, Math.round(event.clientX),
      Math.round(event.clientY), MODIFIERS(event), width, height, left, top, at, was, edge);
  }

  /// The box that a handle dragged so far would give. At the corner of an image, and with Shift everywhere,
  /// width and height keep their proportion.
  function sizedBox(event) {
    const { handle, box } = drag;
    let width = Math.max(1, box.width + handle.x * (event.clientX + window.scrollX - drag.x));
    let height = Math.max(1, box.height + handle.y * (event.clientY + window.scrollY - drag.y));
    const corner = handle.x && handle.y;
    if ((event.shiftKey || (corner && isMediaLike(drag.element))) && box.width && box.height) {
      const wide = width / box.width, high = height / box.height;
      const scale = !handle.y ? wide : !handle.x ? high : Math.max(wide, high);
      width = Math.max(1, box.width * scale);
      height = Math.max(1, box.height * scale);
    }
    return {
      left: handle.x < 0 ? box.left + box.width - width : box.left,
      top: handle.y < 0 ? box.top + box.height - height : box.top,
      width: Math.round(width), height: Math.round(height),
    };
  }

  function movedBox(event) {
    const { box } = drag;
    return {
      left: box.left + event.clientX + window.scrollX - drag.x, top: box.top + event.clientY + window.scrollY - drag.y,
      width: box.width, height: box.height,
    };
  }

  function showOutline(box, label) {
    place(outline, box.left - window.scrollX, box.top - window.scrollY, box.width, box.height);
    outlineSize.textContent = label;
  }

  function showDropCaret(x, y) {
    const at = placeAt(x, y);
    const node = at && nodes.get(at[0]);
    placeCaret(dropCaret, node ? caretBox(node, at[1]) : null);
    return at;
  }

  // Near an edge of the window the page scrolls under a drag, faster the nearer.
  const SCROLL_ZONE = 24;

  function autoscroll(x, y) {
    const pull = (at, end) => at < SCROLL_ZONE ? at - SCROLL_ZONE : at > end - SCROLL_ZONE ? at - end + SCROLL_ZONE : 0;
    const limit = (speed) => Math.max(-SCROLL_ZONE, Math.min(SCROLL_ZONE, speed));
    const right = limit(pull(x, window.innerWidth)), down = limit(pull(y, window.innerHeight));
    if (!right && !down) return false;
    const before = [window.scrollX, window.scrollY];
    window.scrollBy(right / 2, down / 2);
    return before[0] !== window.scrollX || before[1] !== window.scrollY;
  }

  // The scroll goes on while the mouse rests there: one step a frame, as the engine draws them.
  let scrolling = null;  // the last event of the drag

  function keepScrolling() {
    if (!scrolling || !drag || !drag.begun) return;
    if (!autoscroll(scrolling.clientX, scrolling.clientY)) {
      scrolling = null;
      return;
    }
    showDrag(scrolling);
    requestAnimationFrame(keepScrolling);
  }

  function showDrag(event) {
    if (drag.type === DRAG_CONTENT) {
      shield.style.cursor = event.ctrlKey ? 'copy' : 'default';
      showDropCaret(event.clientX, event.clientY);
    } else if (drag.type === DRAG_COLUMN) {
      showGuide(event);
    } else if (drag.type === DRAG_MOVE) {
      showOutline(movedBox(event), '');
    } else {
      const box = sizedBox(event);
      showOutline(box, box.width + ' \u00d7 ' + box.height);
    }
  }

  function followDrag(event) {
    if (!drag) return;
    if (!(event.buttons & 1)) return endDrag();
    const far = Math.hypot(event.clientX + window.scrollX - drag.x, event.clientY + window.scrollY - drag.y);
    if (!drag.begun && far < FAR_ENOUGH) return;
    if (!drag.begun) beginDrag(event);
    showDrag(event);
    if (drag.type === DRAG_SIZE || drag.column) return;
    const rests = scrolling;
    scrolling = event;
    if (!rests) requestAnimationFrame(keepScrolling);
  }

  /// Where a positioned element stands, as `left` and `top` count for it.
  function offsetOf(element) {
    const style = getComputedStyle(element);
    return { left: px(style.left), top: px(style.top) };
  }

  function resultOf(event) {
    if (drag.type === DRAG_CONTENT) return { at: placeAt(event.clientX, event.clientY) };
    if (drag.column) return { edge: columnResult(event) };
    const at = isPositioned(drag.element) ? offsetOf(drag.element) : null;
    if (drag.type === DRAG_MOVE) {
      const box = movedBox(event);
      return { left: Math.round(at.left + box.left - drag.box.left), top: Math.round(at.top + box.top - drag.box.top) };
    }
    const box = sizedBox(event);
    const extra = extraOf(getComputedStyle(drag.element));
    const both = isMediaLike(drag.element) || event.shiftKey;
    const result = { was: Math.round(drag.box.width - extra.width) };
    if (drag.handle.x || both) result.width = Math.max(1, Math.round(box.width - extra.width));
    if (drag.handle.y || both) result.height = Math.max(1, Math.round(box.height - extra.height));
    if (at && drag.handle.x < 0) result.left = Math.round(at.left + box.left - drag.box.left);
    if (at && drag.handle.y < 0) result.top = Math.round(at.top + box.top - drag.box.top);
    return result;
  }

  /// The release: tells what the drag has come to. False where there was none.
  function dropDrag(event) {
    if (!drag || !drag.begun) {
      drag = null;
      return false;
    }
    tellDrag(DRAG_DROP, event, resultOf(event));
    endDrag();
    return true;
  }

  /// Away with it; what was dragged stays where it is.
  function endDrag() {
    drag = null;
    scrolling = null;
    for (const box of [outline, guide, dropCaret, shield]) hide(box);
    restartBlink();
  }
