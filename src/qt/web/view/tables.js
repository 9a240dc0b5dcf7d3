  // --- tables: the cell that the caret is in ---

  /// The innermost cell that holds all of the selected text, or the caret.
  function currentCell() {
    const selection = getSelection();
    if (!editable || control || !selection.rangeCount) return null;
    const holder = selection.getRangeAt(0).commonAncestorContainer;
    const cell = (holder.nodeType === 1 ? holder : holder.parentElement || host).closest('td,th');
    return cell && ids.has(cell) ? cell : null;
  }

  /// What boxes that scroll by themselves leave to be seen of an element.
  function seenPart(element) {
    const box = element.getBoundingClientRect();
    const part = { left: box.left, top: box.top, right: box.right, bottom: box.bottom };
    for (let outer = element.parentElement; outer && outer !== document.body; outer = outer.parentElement) {
      if (outer === document.documentElement || getComputedStyle(outer).overflowX === 'visible') continue;
      const limit = outer.getBoundingClientRect();
      const left = limit.left + outer.clientLeft, top = limit.top + outer.clientTop;
      part.left = Math.max(part.left, left);
      part.top = Math.max(part.top, top);
      part.right = Math.min(part.right, left + outer.clientWidth);
      part.bottom = Math.min(part.bottom, top + outer.clientHeight);
    }
    return part.right > part.left && part.bottom > part.top ? { box, part } : null;
  }

  function drawCell() {
    const cell = currentCell();
    const seen = cell && seenPart(cell);
    if (!seen) return hide(cellFrame);
    const { box, part } = seen;
    place(cellFrame, box.left, box.top, box.width, box.height);
    cellFrame.style.clipPath = `inset(${part.top - box.top}px ${box.right - part.right}px ` +
      `${box.bottom - part.bottom}px ${part.left - box.left}px)`;
  }
