  // --- where things are ---

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
