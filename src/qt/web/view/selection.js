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

  let questionsBeneath = 0;

  /// Asks the page as if nothing were drawn over it.
  function beneath(question) {
    if (questionsBeneath++ === 0) host.classList.add('through');
    try {
      return question();
    } finally {
      if (--questionsBeneath === 0) host.classList.remove('through');
    }
  }

  function targetOf(event) {
    return event.target === host ? beneath(() => document.elementFromPoint(event.clientX, event.clientY))
      : event.target;
  }

  function placeAt(x, y) {
    const range = beneath(() => document.caretRangeFromPoint(x, y));
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

  function select(type, anchor, anchorOffset, focus, focusOffset, selected, reveal, composing, mouse) {
    // What the mouse has drawn since is still to be heard of; then the selection comes again.
    if (mouse < mouseNumber || (pressed && dragged)) return;
    const selection = getSelection();
    control = type === 2 ? selected : 0;
    composed = composing.length ? { node: composing[0], start: composing[1], end: composing[2] } : null;
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
