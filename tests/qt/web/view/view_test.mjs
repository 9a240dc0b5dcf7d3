// The view's modules, as far as they need no browser: patches on a small DOM, and the geometry of drags and tables.

import { printed, table } from './small_dom.mjs';
import { readFileSync, readdirSync } from 'node:fs';
import { spawnSync } from 'node:child_process';
import assert from 'node:assert/strict';
import test from 'node:test';

const folder = new URL('../../../../src/qt/web/view/', import.meta.url);
const { applyPatch } = await import(new URL('patches.js', folder));
const { connectBridge } = await import(new URL('messages.js', folder));
const { ids, nodes, state } = await import(new URL('state.js', folder));
const { columnShift, columnWidths, movedBox, scrollPull, sizedBox } = await import(new URL('drag_geometry.js', folder));
const { cellsAtEdge, sideAt, tableHandleAt } = await import(new URL('table_edges.js', folder));
const { cellBeyond, nearestCell } = await import(new URL('table_moves.js', folder));
const { nearEdge } = await import(new URL('wholes.js', folder));
const { closedArea } = await import(new URL('selected_cells.js', folder));
const { wayToReveal } = await import(new URL('selection.js', folder));

const reports = [];
connectBridge({ up: (text) => reports.push(...JSON.parse(text)[2]) });
let patch = 0;

/// Applies operations, and answers what was told of them.
async function apply(...operations) {
  reports.length = 0;
  applyPatch(++patch, operations);
  await Promise.resolve();
  return reports.map(([kind, ...rest]) => [kind, rest[0]]);
}
const shown = () => printed(document).replace(/<TVX-HOST.*<\/TVX-HOST>/, '|');

test('each module is one by itself', async () => {
  for (const name of readdirSync(folder).filter((file) => file.endsWith('.js') && file !== 'view.js')) {
    await import(new URL(name, folder));
  }
  // The one that starts all: only read.
  const { status, stderr } = spawnSync(process.execPath, ['--check', new URL('view.js', folder).pathname]);
  assert.equal(status, 0, String(stderr));
});

test('a patch makes the tree', async () => {
  assert.deepEqual(await apply(['e', 1, 0, 0, 'html', 0, ['lang', 'en', 0]], ['e', 2, 1, 0, 'body', 0, []],
    ['e', 3, 2, 0, 'p', 0, []], ['t', 4, 3, 0, 'text'], ['c', 5, 2, 3, 'note'],
    ['e', 6, 2, 0, 'path', 1, ['xlink:href', '#a', 1]]), [['done', patch]]);
  assert.equal(shown(), '<HTML lang=en><BODY><!--note--><P>text</P><path xlink:href=#a></path></BODY>|</HTML>');
  assert.equal(state.seen, patch);
});

test('a patch changes what is there', async () => {
  await apply(['x', 4, 1, 2, 'es'], ['a', 3, 'class', 'c', 0], ['p', 5, 3, 4], ['n', 1, 'lang'], ['d', 6]);
  assert.equal(shown(), '<HTML><BODY><P class=c><!--note-->test</P></BODY>|</HTML>');
  await apply(['p', 6, 2, 3]);
  assert.equal(shown(), '<HTML><BODY><path xlink:href=#a></path><P class=c><!--note-->test</P></BODY>|</HTML>');
});

test('what is forgotten is gone with all that is in it', async () => {
  const inner = nodes.get(4);
  await apply(['f', 3]);
  assert.equal(nodes.has(3) || nodes.has(4) || nodes.has(5), false);
  assert.equal(inner.parentNode.nodeName, 'P');
  assert.equal(shown(), '<HTML><BODY><path xlink:href=#a></path></BODY>|</HTML>');
});

test('what does not fit is told, and the rest is done', async () => {
  const told = await apply(['d', 99], ['t', 7, 98, 0, 'x'], ['x', 2, 0, 0, 'x'], ['e', 8, 2, 0, 'b', 0, []]);
  assert.deepEqual(told, [['failed', 99], ['failed', 7], ['failed', 2], ['done', patch]]);
  assert.match(shown(), /<B><\/B>/);
});

test('an attribute that the engine refuses costs no element', async () => {
  assert.deepEqual(await apply(['e', 9, 2, 0, 'i', 0, ['a b', '', 0, 'id', 'i', 0]], ['a', 9, '<', '', 0]),
    [['done', patch]]);
  assert.match(shown(), /<I id=i><\/I>/);
});

test('the host stays the last of the root', async () => {
  await apply(['e', 10, 1, 0, 'frameset', 0, []]);
  assert.match(shown(), /<FRAMESET><\/FRAMESET>\|<\/HTML>$/);
  await apply(['e', 11, 1, 2, 'head', 0, []]);
  assert.match(shown(), /<HEAD><\/HEAD><BODY>.*<FRAMESET><\/FRAMESET>\|<\/HTML>$/);
  await apply(['d', 11]);
});

test('controls of a form hide none of its methods', async () => {
  await apply(['e', 20, 2, 0, 'form', 0, ['id', 'f', 0]], ['e', 21, 20, 0, 'p', 0, []], ['t', 22, 21, 0, 'in it']);
  const form = nodes.get(20);
  const taken = [...readFileSync(new URL('dom.js', folder), 'utf8').matchAll(/taken\(\w+\.prototype, '(\w+)'\)/g)];
  assert.ok(taken.length > 25);
  for (const name of [...taken.map((match) => match[1]), 'remove', 'append', 'children']) {
    Object.defineProperty(form, name, { value: 'a control' });
  }
  assert.deepEqual(await apply(['e', 23, 20, 21, 'b', 0, []], ['a', 20, 'action', 'x', 0], ['n', 20, 'id'],
    ['d', 21], ['p', 21, 20, 23]), [['done', patch]]);
  assert.match(shown(), /<FORM action=x><P>in it<\/P><B><\/B><\/FORM>/);
  assert.deepEqual(await apply(['p', 20, 2, 8]), [['done', patch]]);
  assert.deepEqual(await apply(['f', 20]), [['done', patch]]);
  assert.doesNotMatch(shown(), /FORM/);
  assert.equal(nodes.has(22), false);
});

test('a picture that is asked for again is another one to the engine, wherever it stands', async () => {
  const address = (id) => nodes.get(id).getAttribute('src');
  await apply(['e', 31, 2, 0, 'img', 0, ['src', 'a.png', 0]], ['e', 32, 2, 0, 'img', 0, ['src', 'http://a.org/a.png', 0]]);
  assert.equal(address(31), 'a.png');
  await apply(['a', 31, 'src', 'a.png', 0], ['a', 32, 'src', 'http://a.org/a.png', 0]);
  assert.equal(address(31), 'a.png?tvx=1');
  assert.equal(address(32), 'http://a.org/a.png');
  await apply(['a', 31, 'src', 'a.png', 0], ['e', 33, 2, 0, 'img', 0, ['src', './a.png', 0]]);
  assert.equal(address(31), 'a.png?tvx=2');
  assert.equal(address(33), './a.png?tvx=2');
  await apply(['a', 31, 'src', 'b.png?x#y', 0]);
  assert.equal(address(31), 'b.png?x#y');
  await apply(['a', 31, 'src', 'b.png?x#y', 0]);
  assert.equal(address(31), 'b.png?x&tvx=1#y');
  await apply(['f', 31], ['f', 32], ['f', 33]);
});

const box = { left: 100, top: 50, width: 200, height: 100 };

test('a handle sizes a box', () => {
  assert.deepEqual(sizedBox(box, { x: 1, y: 0 }, 30, 99, false), { left: 100, top: 50, width: 230, height: 100 });
  assert.deepEqual(sizedBox(box, { x: -1, y: -1 }, 30, -10, false), { left: 130, top: 40, width: 170, height: 110 });
  assert.deepEqual(sizedBox(box, { x: 1, y: 1 }, 100, 10, true), { left: 100, top: 50, width: 300, height: 150 });
  assert.deepEqual(sizedBox(box, { x: -1, y: 0 }, 100, 0, true), { left: 200, top: 50, width: 100, height: 50 });
  assert.deepEqual(sizedBox(box, { x: -1, y: 0 }, 999, 0, false), { left: 299, top: 50, width: 1, height: 100 });
});

test('a box is moved', () => {
  assert.deepEqual(movedBox(box, -5, 7), { left: 95, top: 57, width: 200, height: 100 });
});

test('near an edge of the window the page scrolls, faster the nearer', () => {
  assert.deepEqual(scrollPull(400, 300, 800, 600), { right: 0, down: 0 });
  assert.deepEqual(scrollPull(4, 590, 800, 600), { right: -20, down: 14 });
  assert.deepEqual(scrollPull(-500, 900, 800, 600), { right: -24, down: 24 });
});

test('the edge of a column stays between its cells', () => {
  const column = { sign: 1, widthBefore: 100, widthAfter: 60, extraBefore: 10, extraAfter: 10 };
  assert.equal(columnShift(column, 20.4), 20);
  assert.equal(columnShift(column, -500), -86);
  assert.equal(columnShift(column, 500), 46);
  assert.equal(columnShift({ ...column, sign: -1 }, 20), -20);
  assert.deepEqual(columnWidths(column, 20), [110, 30]);
});

test('no column gets narrower than what is in it', () => {
  const column = { sign: 1, widthBefore: 100, widthAfter: 60, extraBefore: 10, extraAfter: 10, leastBefore: 80, leastAfter: 50 };
  assert.equal(columnShift(column, -50), -20);
  assert.equal(columnShift(column, 50), 10);
  assert.equal(columnShift({ ...column, grows: true }, 50), 50);
  assert.deepEqual(columnWidths({ ...column, grows: true }, 50), [140, 40]);
});

test('an edge is near within four pixels outside and three inside', () => {
  const at = { left: 100, top: 50, right: 300, bottom: 150 };
  assert.equal(nearEdge(at, 96, 100), true);
  assert.equal(nearEdge(at, 95, 100), false);
  assert.equal(nearEdge(at, 102, 100), true);
  assert.equal(nearEdge(at, 103, 100), false);
  assert.equal(nearEdge(at, 304, 100), true);
  assert.equal(nearEdge(at, 305, 100), false);
  assert.equal(nearEdge(at, 297, 100), false);
  assert.equal(nearEdge(at, 200, 46), true);
  assert.equal(nearEdge(at, 200, 45), false);
  assert.equal(nearEdge(at, 200, 154), true);
  assert.equal(nearEdge(at, 200, 155), false);
});

function known(whole) {
  for (const row of whole.rows) for (const cell of row.cells) ids.set(cell, 1);
  ids.set(whole, 1);
  return whole;
}

test('the edge between two columns is that of the cells that fill the fewest', () => {
  const whole = known(table([[0, 100, 1], [100, 200, 2]], [[0, 100, 1], [100, 120, 1], [220, 80, 1]]));
  const edge = sideAt(whole.rows[0].cells[0], 101, 10);
  assert.equal(edge.toRight, true);
  const { before, after, x } = cellsAtEdge(edge);
  assert.equal(before, whole.rows[0].cells[0]);
  assert.equal(after, whole.rows[1].cells[1]);
  assert.equal(x, 100);
  assert.equal(sideAt(whole.rows[0].cells[0], 50, 10), null);
  assert.equal(sideAt(whole.rows[0].cells[1], 299, 10), null, 'after the last column there is none');
  // What a table has beside its cells by its border or by rounding is no column.
  assert.equal(sideAt(known(table([[0, 296]])).rows[0].cells[0], 295, 10), null);
  const bordered = known(table([[0, 293]]));
  bordered.computed = { borderLeftWidth: '3px' };
  assert.equal(sideAt(bordered.rows[0].cells[0], 292, 10), null);
  assert.notEqual(sideAt(known(table([[0, 295], [295, 5]])).rows[0].cells[0], 294, 10), null);
});

test('what isn\'t mirrored has no edges', () => {
  assert.equal(sideAt(table([[0, 100], [100, 200]]).rows[0].cells[0], 99, 10), null);
});

test('an edge after which no cell begins can\'t be moved', () => {
  const whole = known(table([[0, 100], [150, 150]]));
  assert.equal(cellsAtEdge(sideAt(whole.rows[0].cells[0], 99, 10)), null);
});

test('in a table from right to left the cell before an edge is the right one', () => {
  const whole = known(table([[200, 100], [0, 200]]));
  whole.computed = { direction: 'rtl' };
  const { before, after } = cellsAtEdge(sideAt(whole.rows[0].cells[0], 199, 10));
  assert.deepEqual([before, after], [whole.rows[0].cells[0], whole.rows[0].cells[1]]);
  assert.equal(tableHandleAt(whole, 1, 5).x, -1);
});

test('the end of a table and the corner below it are handles', () => {
  const whole = table([[0, 300]], [[0, 300]], [[0, 300]]);
  assert.deepEqual(tableHandleAt(whole, 301, 20), { x: 1, y: 0, cursor: 'ew-resize' });
  assert.deepEqual(tableHandleAt(whole, 295, 58), { x: 1, y: 1, cursor: 'nwse-resize' });
  assert.equal(tableHandleAt(whole, 150, 61), null);
  assert.equal(tableHandleAt(whole, 291, 60).y, 1);
  assert.equal(tableHandleAt(whole, 290, 60), null);
  assert.equal(tableHandleAt(whole, 300, 51).y, 1);
  assert.equal(tableHandleAt(whole, 300, 50).y, 0);
});

test('a move by a line goes to the cell below at the same x', () => {
  const whole = table([[0, 150], [150, 150]], [[0, 300, 2]], [[0, 150], [150, 150]]);
  const [first, middle, last] = whole.rows.map((row) => row.cells);
  assert.equal(cellBeyond(first[1], 200, false), middle[0]);
  assert.equal(cellBeyond(last[1], 200, true), middle[0]);
  assert.equal(cellBeyond(middle[0], 200, false), last[1]);
  assert.equal(cellBeyond(last[0], 10, false), null);
});

test('rows that share the line of collapsed borders stand one below the other', () => {
  const whole = table([[0, 100, 1, 21], [100, 100, 1, 22]], [[0, 100], [100, 100]]);
  const [first, last] = whole.rows.map((row) => row.cells);
  assert.equal(cellBeyond(first[0], 50, false), last[0]);
  assert.equal(cellBeyond(last[0], 50, true), first[0]);
  assert.equal(cellBeyond(first[1], 150, false), null);
  assert.notEqual(cellBeyond(last[1], 150, true), first[1]);
});

test('the nearest cell is taken where none is at the x, and cells of several rows are passed', () => {
  const whole = table([[0, 100, 1, 40], [100, 100]], [[100, 100]]);
  assert.deepEqual(nearestCell(whole.rows[1], 20, () => true), { cell: whole.rows[1].cells[0], away: 80 });
  assert.equal(cellBeyond(whole.rows[0].cells[1], 120, false), whole.rows[1].cells[0]);
  assert.equal(cellBeyond(whole.rows[0].cells[0], 20, false), null);
  const stepped = table([[0, 100], [100, 100]], [[100, 100]], [[100, 100]]);
  assert.equal(cellBeyond(stepped.rows[0].cells[0], 20, false), stepped.rows[1].cells[0]);
});

test('the window goes as far as a caret needs', () => {
  assert.deepEqual(wayToReveal({ left: 10, top: -30, height: 20 }), [0, -34]);
  assert.deepEqual(wayToReveal({ left: 900, top: 590, height: 20 }), [120, 14]);
  assert.deepEqual(wayToReveal({ left: -10, top: 100, height: 20 }), [-30, 0]);
  assert.deepEqual(wayToReveal({ left: 10, top: 0, height: 20 }), [0, 0], 'what is in it just so stays');
  assert.deepEqual(wayToReveal({ left: 10, top: 580, height: 20 }), [0, 0]);
});

test('what a dialog covers of the window is no place for a caret', () => {
  state.cover = { top: 0, bottom: 250 };
  assert.deepEqual(wayToReveal({ left: 10, top: 400, height: 20 }), [0, 74]);
  assert.deepEqual(wayToReveal({ left: 10, top: 300, height: 20 }), [0, 0]);
  state.cover = { top: 250, bottom: 0 };
  assert.deepEqual(wayToReveal({ left: 10, top: 100, height: 20 }), [0, -154]);
  state.cover = { top: 0, bottom: 0 };
});

test('an area of cells grows until it cuts none', () => {
  const box = (left, top, right, bottom) => ({ left, top, right, bottom });
  const wide = box(0, 0, 20, 10), low = box(0, 10, 10, 20), last = box(10, 10, 20, 20), aside = box(20, 0, 30, 20);
  assert.deepEqual(closedArea(low, wide, [wide, low, last, aside]), box(0, 0, 20, 20));
  assert.deepEqual(closedArea(low, last, [wide, low, last, aside]), box(0, 10, 20, 20));
  // One that is cut only when the area has grown.
  for (const [turn, grown] of [[(l, t, r, b) => box(l, t, r, b), box(-10, 0, 20, 10)],
    [(l, t, r, b) => box(t, l, b, r), box(0, -10, 10, 20)],
    [(l, t, r, b) => box(-r, t, -l, b), box(-20, 0, 10, 10)], [(l, t, r, b) => box(t, -r, b, -l), box(0, -20, 10, 10)]]) {
    const start = turn(10, 0, 20, 10);
    assert.deepEqual(closedArea(start, start, [turn(-10, 5, 5, 10), turn(0, 0, 15, 10)]), grown);
  }
  // Collapsed borders: what only shares a line of pixels isn't cut.
  const around = [box(-9, 10, 1, 20), box(19, 10, 29, 20), box(0, 1, 20, 11), box(0, 19, 20, 29)];
  assert.deepEqual(closedArea(low, last, around), box(0, 10, 20, 20));
});
