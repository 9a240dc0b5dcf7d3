// Rooms of large elements, on a small DOM: which child stands in which slot.

import './small_dom.mjs';
import assert from 'node:assert/strict';
import test from 'node:test';

const folder = new URL('../../../../src/qt/web/view/', import.meta.url);
const { MOST, RoomList, WANTED } = await import(new URL('room_list.js', folder));
const { paintFarRoomsApart } = await import(new URL('far_rooms.js', folder));
const { applyPatch } = await import(new URL('patches.js', folder));
const { inheritedAnew } = await import(new URL('sheet_facts.js', folder));
const { mark, markedTexts } = await import(new URL('marks.js', folder));
const { nodes } = await import(new URL('state.js', folder));
const { roomCounts } = await import(new URL('rooms.js', folder));

/// Numbers that are the same in each run.
function random(seed) {
  return (count) => {
    seed = (seed * 1103515245 + 12345) % 2147483648;
    return Math.floor(seed / 65536) % count;
  };
}

let patch = 0, lastId = 0;
const apply = (...operations) => applyPatch(++patch, operations);
const element = (name, parent, before = 0, attributes = []) =>
  ['e', ++lastId, parent, before, name, 0, attributes];

/// A new page; answers its body's number.
function newPage() {
  if (nodes.size) apply(['f', [...nodes.keys()][0]]);
  const html = element('html', 0);
  const body = element('body', html[1]);
  apply(html, body);
  return body[1];
}

const slotsOf = (parent) => nodes.get(parent).shadow.childNodes.filter((slot) => slot.nodeName === 'SLOT');
const inSlots = (parent) => slotsOf(parent).flatMap((slot) => slot.assigned);
const seenChildren = (parent) => nodes.get(parent).childNodes.filter((node) => node.nodeType !== 8);

function fill(parent, count, name = 'p') {
  for (let i = 0; i < count; ++i) apply(element(name, parent), ['t', ++lastId, parent, 0, '\n']);
}

test('a list of rooms keeps all children in their order, in rooms of a fitting size', () => {
  const pick = random(1), list = new RoomList(), model = [];
  const isBlock = (node) => node.isBlock;
  for (let round = 0; round < 400; ++round) {
    for (let i = pick(60); i > 0; --i) {
      const at = pick(model.length + 1);
      if (pick(5) < 2 && model[at]) {
        list.remove(model[at]);
        model.splice(at, 1);
      } else {
        const node = { isBlock: pick(3) > 0 };
        list.add(node, model[at] || null);
        model.splice(at, 0, node);
      }
    }
    list.divide(isBlock);
    for (const room of [...list.rooms]) list.mend(room, isBlock);
    assert.ok(list.rooms.every((room, i) => i === 0 || isBlock(room.children[0])));
    list.divide(isBlock);
    list.dirty.clear();
    assert.deepEqual(list.rooms.flatMap((room) => room.children), model);
    assert.ok(list.rooms.every((room) => room.children.length <= MOST + 20), 'too large');
    for (const room of list.rooms) for (const node of room.children) assert.equal(list.roomOf(node), room);
  }
  assert.ok(list.rooms.length > model.length / MOST / 2);
});

test('what much comes in before keeps its room', () => {
  const list = new RoomList(), isBlock = () => true, make = (name) => ({ name });
  const first = Array.from({ length: 40 }, () => make('first')), last = Array.from({ length: 40 }, () => make('last'));
  for (const node of [...first, ...last]) list.add(node, null);
  list.divide(isBlock);
  const [room] = list.rooms;
  assert.equal(room.children.length, 80);
  for (let i = 0; i < 300; ++i) {
    list.add(make('between'), last[0]);
    if (i % 30 === 29) list.divide(isBlock);
  }
  assert.equal(list.roomOf(last[0]), room, 'it stands where it stood');
  assert.deepEqual(room.children, last);
  assert.deepEqual(list.rooms.flatMap((one) => one.children.map((node) => node.name)),
    [...first.map(() => 'first'), ...Array(300).fill('between'), ...last.map(() => 'last')]);
  assert.ok(list.rooms.every((one) => one.children.length <= MOST));
});

test('what only seems to begin a room stays with what stands before it', () => {
  const list = new RoomList();
  for (let i = 0; i < 5 * WANTED; ++i) list.add({ i }, null);
  list.divide(() => true);
  assert.equal(list.rooms.length, 5);
  for (const room of [...list.rooms]) list.mend(room, () => false);
  assert.equal(list.rooms.length, 1);
  list.divide(() => true);
  assert.equal(list.rooms.length, 1);
  list.forgetRefusals();
  list.divide(() => true);
  assert.equal(list.rooms.length, 5);
});

test('a few children have no rooms, many have', () => {
  const body = newPage();
  fill(body, 90);
  assert.equal(nodes.get(body).shadow, undefined);
  fill(body, 90);
  assert.ok(slotsOf(body).length > 5);
  assert.deepEqual(inSlots(body), seenChildren(body));
});

test('rooms follow what patches do', () => {
  const body = newPage(), pick = random(2);
  fill(body, 150);
  for (let round = 0; round < 300; ++round) {
    const children = nodes.get(body).childNodes, idOf = (node) => [...nodes].find(([, one]) => one === node)[0];
    const one = idOf(children[pick(children.length)]), before = idOf(children[pick(children.length)]);
    const kind = pick(6);
    if (kind === 0) apply(['f', one]);
    else if (kind === 1 && one !== before) apply(['d', one], ['p', one, body, before]);
    else if (kind === 2) apply(['c', ++lastId, body, before, 'note']);
    else if (kind === 3) apply(...Array.from({ length: pick(150) }, () => element(pick(4) ? 'p' : 'b', body, before)));
    else if (kind === 4) apply(['d', one]) || apply(['p', one, body, 0]);
    else apply(['t', ++lastId, body, before, 'text']);
    assert.deepEqual(inSlots(body), seenChildren(body));
    for (const slot of slotsOf(body).slice(1)) assert.equal(slot.assigned[0].nodeName, 'P');
  }
});

test('all children may go, and others come', () => {
  const body = newPage();
  fill(body, 150);
  for (const [id, node] of [...nodes]) if (node.parentNode === nodes.get(body)) apply(['f', id]);
  assert.deepEqual(inSlots(body), []);
  assert.equal(slotsOf(body).length, 0);
  fill(body, 3);
  assert.deepEqual(inSlots(body), seenChildren(body));
});

// What the box that a child stands in would lay out otherwise.
for (const [what, computed] of Object.entries({
  'a list item': { display: 'list-item' }, 'what sticks': { position: 'sticky' },
})) {
  test(`${what} among the children: no rooms`, () => {
    const body = newPage();
    apply(element('h1', body));
    nodes.get(lastId).computed = computed;
    fill(body, 150);
    assert.equal(nodes.get(body).shadow, undefined);
  });
  test(`${what} that comes later: the rooms are no boxes any more, until it has gone`, () => {
    const body = newPage();
    fill(body, 150);
    assert.ok(roomCounts()[0] > 5);
    apply(element('h1', body), ['a', lastId, 'class', 'x', 0]);
    nodes.get(lastId).computed = computed;
    apply(['a', lastId, 'class', 'y', 0]);
    assert.deepEqual(roomCounts(), [0]);
    apply(['f', lastId]);
    assert.ok(roomCounts()[0] > 5);
  });
}

for (const [what, style] of Object.entries({
  columns: { columnCount: '2' }, 'columns of a width': { columnWidth: '100px' }, 'a row of boxes': { display: 'flex' },
  'lines that run down': { writingMode: 'vertical-rl' }, 'a proportion': { aspectRatio: '2 / 1' },
})) {
  test(`an element that lays out its children as ${what}: no rooms`, () => {
    const body = newPage();
    nodes.get(body).computed = style;
    fill(body, 150);
    assert.equal(nodes.get(body).shadow, undefined);
    nodes.get(body).computed = {};
    fill(body, 1);
    assert.ok(roomCounts()[0] > 5);
    nodes.get(body).computed = style;
    apply(['a', body, 'class', 'x', 0]);
    assert.deepEqual(roomCounts(), [0]);
  });
}

test('text before and after all children is in their lines: no rooms', () => {
  for (const pseudo of ['::before', '::after']) {
    const body = newPage();
    nodes.get(body)[pseudo] = { content: '"x"', display: 'inline' };
    fill(body, 150);
    assert.equal(nodes.get(body).shadow, undefined);
    nodes.get(body)[pseudo] = { content: '""', display: 'table' };
    fill(body, 1);
    assert.ok(roomCounts()[0] > 5);
  }
});

test('a height in percent of one that is given: no rooms', () => {
  const body = newPage();
  nodes.get(body).computed = { height: '100%' };
  fill(body, 150);
  assert.ok(roomCounts()[0] > 5);
  apply(element('div', body), ['a', lastId, 'id', 'x', 0]);
  nodes.get(lastId).computed = { 'min-height': '10%' };
  apply(['a', lastId, 'id', 'y', 0]);
  assert.deepEqual(roomCounts(), [0]);
});

test('a room begins only at a block in flow', () => {
  const body = newPage();
  for (let i = 0; i < 300; ++i) {
    apply(element('p', body));
    nodes.get(lastId).computed = [{}, { float: 'left' }, { position: 'absolute' }, { display: 'inline' },
      { display: 'none' }, { display: 'contents' }, { clear: 'both' }][i % 7];
  }
  fill(body, 1);
  const slots = slotsOf(body);
  assert.ok(slots.length > 3);
  for (const { assigned } of slots.slice(1)) assert.deepEqual(assigned[0].computed, {});
});

test('no room begins at a block without a height', () => {
  const body = newPage();
  for (let i = 0; i < 300; ++i) {
    apply(element('p', body), ['t', ++lastId, lastId - 1, 0, 'x']);
    if (i % 3) nodes.get(lastId - 1).setBox(0, 0, 800, 0);
  }
  const slots = slotsOf(body);
  assert.ok(slots.length > 3);
  for (const { assigned } of slots.slice(1)) assert.equal(assigned[0].getBoundingClientRect().height, 9);
  const text = slots[2].assigned[0].childNodes[0], count = slots[1].assigned.length;
  slots[2].assigned[0].setBox(0, 0, 800, 0);
  apply(['x', [...nodes].find(([, node]) => node === text)[0], 0, 1, '']);
  assert.ok(slots[1].assigned.length > count);
  assert.deepEqual(inSlots(body), seenChildren(body));
});

test('the first room is open where something out of flow comes first', () => {
  const body = newPage();
  apply(['t', ++lastId, body, 0, '\n'], ['c', ++lastId, body, 0, 'note'], element('p', body));
  const first = lastId;
  fill(body, 150);
  assert.equal(slotsOf(body)[0].className || '', '');
  nodes.get(first).computed = { float: 'left' };
  apply(['a', first, 'align', 'left', 0]);
  assert.equal(slotsOf(body)[0].className, 'open');
  apply(['f', first]);
  assert.equal(slotsOf(body)[0].className, '');
});

test('a child that is no block any more goes to the room before it', () => {
  const body = newPage();
  fill(body, 150);
  const [first, second] = slotsOf(body), start = second.assigned[0];
  const count = first.assigned.length;
  start.computed = { float: 'left' };
  apply(['a', [...nodes].find(([, node]) => node === start)[0], 'align', 'left', 0]);
  assert.ok(first.assigned.length > count);
  assert.deepEqual(inSlots(body), seenChildren(body));
});

test('an element that can have no such tree is left alone', () => {
  const body = newPage();
  apply(element('center', body));
  const centre = lastId;
  fill(centre, 150);
  assert.equal(nodes.get(centre).shadow, undefined);
});

test('what can have no rooms is not asked again with each change', () => {
  const body = newPage();
  apply(element('h1', body));
  nodes.get(lastId).computed = { display: 'list-item' };
  fill(body, 300);
  const asked = globalThis.getComputedStyle;
  let count = 0;
  globalThis.getComputedStyle = (...rest) => {
    ++count;
    return asked(...rest);
  };
  fill(body, 10);
  globalThis.getComputedStyle = asked;
  assert.ok(count <= 10 * 5, String(count));
  apply(['f', [...nodes].find(([, node]) => node.nodeName === 'H1')[0]]);
  fill(body, 300);
  assert.ok(roomCounts()[0] > 5);
});

test('a large element in another has rooms of its own', () => {
  const body = newPage();
  apply(element('div', body));
  const inner = lastId;
  fill(inner, 150);
  fill(body, 150);
  assert.deepEqual(inSlots(inner), seenChildren(inner));
  assert.deepEqual(inSlots(body), seenChildren(body));
  assert.equal(roomCounts().length, 2);
});

/// Puts the rooms below one another, 100 pixels each, as if the page were scrolled so far.
function layOut(parent, scrolled = 0) {
  slotsOf(parent).forEach((slot, i) => slot.setBox(0, i * 100 - scrolled, 800, 100));
  paintFarRoomsApart();
}
const farRooms = (parent) => slotsOf(parent).map((slot) => (slot.className === 'far' ? 'x' : '.')).join('');

test('rooms are painted apart that are more than a window away', () => {
  const body = newPage();
  fill(body, 800);
  assert.ok(slotsOf(body).length > 30);
  layOut(body);
  assert.match(farRooms(body), /^\.{13}x+$/);
  layOut(body, 1500);
  assert.match(farRooms(body), /^x{8,9}\.{18,20}x+$/);
});

test('a room that holds what may stand elsewhere is not painted apart', () => {
  const body = newPage();
  fill(body, 800);
  layOut(body);
  const child = slotsOf(body)[20].assigned[0], id = [...nodes].find(([, node]) => node === child)[0];
  apply(element('b', id), element('i', lastId));
  const deep = lastId;
  apply(['a', deep, 'style', 'position: absolute', 0]);
  layOut(body);
  assert.equal(farRooms(body).slice(19, 22), 'x.x');
  apply(['n', deep, 'style']);
  layOut(body);
  assert.equal(farRooms(body).slice(19, 22), 'xxx');
});

test('only rooms in sight show waves under words', () => {
  const body = newPage(), texts = [];
  for (let i = 0; i < 1000; ++i) {
    apply(element('p', body), ['t', lastId + 1, lastId, 0, 'word' + i]);
    texts.push(++lastId);
  }
  layOut(body);
  mark(texts.map((id) => [id, 0, 0, nodes.get(id).length]));
  assert.equal(nodes.get(texts[0]).parentNode.getAttribute('tvx-marked'), '', 'the sheet finds what has marks');
  const words = () => markedTexts(0).map((word) => Number(word.slice(4)));
  const inNearRooms = () => {
    const near = slotsOf(body).filter((slot) => slot.className !== 'far').flatMap((slot) => slot.assigned);
    return near.map((child) => Number(child.childNodes[0].data.slice(4)));
  };
  assert.deepEqual(words(), inNearRooms());
  assert.ok(words().length > 200 && words().length < 800, words().length);
  layOut(body, 1500);
  assert.deepEqual(words().sort((a, b) => a - b), inNearRooms());
  assert.ok(words().includes(999));
  nodes.get(body).computed = { display: 'flex' };  // all are shown where the rooms are no boxes
  apply(['a', body, 'class', 'x', 0]);
  paintFarRoomsApart();
  assert.equal(words().length, 1000);
});

test('a text takes its marks with it into another element', () => {
  const body = newPage();
  apply(element('p', body), ['t', lastId + 1, lastId, 0, 'wrold']);
  const text = ++lastId;
  mark([[text, 0, 0, 5]]);
  apply(element('b', body));
  const bold = nodes.get(lastId);
  assert.equal(bold.getAttribute('tvx-marked'), null);
  apply(['p', text, lastId, 0]);
  assert.equal(bold.getAttribute('tvx-marked'), '');
});

test('of what inherits, only what would not inherit by itself counts', () => {
  const declared = (values) => Object.assign(Object.keys(values), { getPropertyValue: (name) => values[name] });
  assert.deepEqual(inheritedAnew(declared({ color: 'inherit', 'font-size': 'inherit', 'box-sizing': 'inherit' })), []);
  assert.deepEqual(inheritedAnew(declared({ 'margin-top': 'inherit', 'margin-left': '0', width: 'inherit' })),
    ['margin-top', 'width']);
});
