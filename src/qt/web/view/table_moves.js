  // --- tables: the line above and the line below ---

  // The engine takes the cells of a row for lines one after the other. Who presses Down means the cell below,
  // and below the last row what follows the table.

  const MOST_LINES = 1000;     // of one row, on the way out of a table
  const MOST_ROWS_PASSED = 60;

  let goal = null;  // where such a move has ended, and at which x it goes on: { node, offset, x }

  function cellOf(node) {
    const element = node && (node.nodeType === 1 ? node : node.parentElement);
    return element && element.closest('td,th');
  }

  /// The cell of a row that is nearest to an x, among those that `fit`, and how far away it is.
  function nearestCell(row, x, fit) {
    let nearest = null, least = Infinity;
    for (const cell of row.cells) {
      const box = cell.getBoundingClientRect();
      const away = Math.max(box.left - x, x - box.right, 0);
      if (away < least && fit(box)) [nearest, least] = [cell, away];
    }
    return { cell: nearest, away: least };
  }

  /// The cell over or under another at an x; where none is, the nearest in the next row. Cells of several rows
  /// that stand beside it are neither.
  function cellBeyond(cell, x, up) {
    const rows = cell.closest('table').rows, step = up ? -1 : 1;
    const box = cell.getBoundingClientRect();
    const fit = (other) => up ? other.bottom <= box.top + 1 : other.top >= box.bottom - 1;
    let second = null;
    for (let i = 1; i < MOST_ROWS_PASSED; ++i) {
      const row = rows[cell.parentElement.rowIndex + step * i];
      if (!row) break;
      const found = nearestCell(row, x, fit);
      if (found.away === 0) return found.cell;
      second = second || found.cell;
    }
    return second;
  }

  /// The middle of a cell's first line, or of its last.
  function lineIn(cell, last) {
    const walker = document.createTreeWalker(cell, NodeFilter.SHOW_TEXT);
    const range = document.createRange();
    let line = null;
    for (let text; (text = walker.nextNode());) {
      range.selectNodeContents(text);
      const rects = range.getClientRects();
      if (rects.length) line = rects[last ? rects.length - 1 : 0];
      if (line && !last) break;
    }
    const at = line || emptyBox(cell);
    return at.top + at.height / 2;
  }

  /// A place in a cell's first line, or its last, at an x: [node, offset].
  function placeIn(cell, x, last) {
    const y = lineIn(cell, last);
    if (y < 0 || y > window.innerHeight) window.scrollBy(0, y - window.innerHeight / 2);
    const box = cell.getBoundingClientRect();
    const within = Math.min(Math.max(x, box.left + 1), box.right - 1);
    const range = beneath(() => document.caretRangeFromPoint(within, lineIn(cell, last)));
    return range && cell.contains(range.startContainer) ? [range.startContainer, range.startOffset] : [cell, 0];
  }

  function moveFocus(alter, [node, offset], x) {
    const selection = getSelection();
    if (alter === 'move') selection.collapse(node, offset);
    else selection.extend(node, offset);
    goal = { node: selection.focusNode, offset: selection.focusOffset, x };
  }

  /// Goes on by lines until the table is left. False where nothing lies beyond it.
  function leaveTable(table, alter, direction) {
    const selection = getSelection();
    for (let i = 0; i < MOST_LINES && table.contains(selection.focusNode); ++i) {
      const { focusNode, focusOffset } = selection;
      selection.modify(alter, direction, 'line');
      if (selection.focusNode === focusNode && selection.focusOffset === focusOffset) break;
    }
    return !table.contains(selection.focusNode);
  }

  /// The outermost table around the focus that a move from `node` has come into.
  function tableEntered(node) {
    let entered = null;
    const { focusNode } = getSelection();
    for (let element = cellOf(focusNode); element; element = element.parentElement) {
      if (element.contains(node)) break;
      if (element.nodeName === 'TABLE') entered = element;
    }
    return entered;
  }

  /// Behind a move by a line from a place: mends what it did to cells. `box` is the caret's before.
  function mendLineMove(node, offset, box, alter, direction) {
    const up = direction === 'backward';
    const x = goal && goal.node === node && goal.offset === offset ? goal.x : box ? box.left : 0;
    const selection = getSelection();
    for (let cell = cellOf(node); cell && !cell.contains(selection.focusNode);) {
      const next = cellBeyond(cell, x, up);
      if (next) return moveFocus(alter, placeIn(next, x, up), x);
      const table = cell.closest('table');
      if (!leaveTable(table, alter, direction)) return moveFocus(alter, [node, offset], x);
      cell = cellOf(table.parentElement);
    }
    const entered = tableEntered(node);
    const row = entered && entered.rows[up ? entered.rows.length - 1 : 0];
    const { cell } = row ? nearestCell(row, x, () => true) : {};
    if (cell && !cell.contains(selection.focusNode)) moveFocus(alter, placeIn(cell, x, up), x);
  }
