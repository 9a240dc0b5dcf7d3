// The height of a page that is still coming in, and its scroll bar, on a small DOM whose boxes the tests give.

import './small_dom.mjs';
import assert from 'node:assert/strict';
import test from 'node:test';

const folder = new URL('../../../../src/qt/web/view/', import.meta.url);
const { extentIs, keepToPage, leaveBar, letBarGo, listenToScrolling, shiftSheet, showAsked, takeBar, takeOffShift } =
  await import(new URL('extent.js', folder));
const { addBox, host } = await import(new URL('host.js', folder));
const { connectBridge } = await import(new URL('messages.js', folder));

const reports = [];
connectBridge({ up: (text) => reports.push(...JSON.parse(text)[2]) });
let now = 0;
performance.now = () => now;

// What is there ends so far below its own upper edge, which the view shifts.
let edge = 0, shift = 0;

function place() {
  for (const element of [root, body, last]) element.setBox(0, edge + shift - scrollY - 20, 800, 20);
  host.setBox(0, -scrollY, 0, 0);
}
/// The page scrolls no further than it goes.
function scrollAsFarAsItGoes(y) {
  const height = Math.max(edge + shift, spacer.style.display === 'block' ? parseFloat(spacer.style.height) : 0);
  globalThis.scrollY = Math.max(0, Math.min(y, height - innerHeight));
}
const placed = (property) => (value) => {
  property(value);
  scrollAsFarAsItGoes(scrollY);
  place();
};
Object.assign(globalThis, {
  scrollTo: placed(({ top }) => scrollAsFarAsItGoes(top)),
  scrollBy: placed(({ top }) => scrollAsFarAsItGoes(scrollY + top)),
});
shiftSheet.replaceSync = placed((text) => (shift = Number((/margin-top: ([\d.]+)px/.exec(text) || [0, 0])[1])));

const spacer = addBox('probe').parentNode.childNodes.find((box) => box.className === 'spacer');
const root = document.documentElement, body = root.appendChild(document.createElement('body'));
const last = body.appendChild(document.createElement('p'));
root.computed = body.computed = { overflowY: 'visible' };
listenToScrolling();

function endsAt(pixels) {
  edge = pixels;
  place();
}

async function scrollPage(y) {
  reports.length = 0;
  now += 1000;
  scrollTo({ top: y });
  document.dispatchEvent(new Event('scroll'));
  await Promise.resolve();
  return reports.filter(([kind]) => kind === 'bar');
}

/// An element that stands so far below the upper edge of what is there.
const elementAt = (y) => document.createElement('p').setBox(0, y + shift - scrollY, 800, 20);

function begin(share, edge) {
  leaveBar();
  extentIs(1, true);
  scrollTo({ top: 0 });
  now += 10_000;
  endsAt(edge);
  extentIs(share, false);
}

test('what is to come is reckoned by what is there', () => {
  begin(0.1, 1000);
  assert.equal(spacer.style.height, '10000px');
  extentIs(0.1005, false);
  assert.equal(spacer.style.height, '10000px', 'a bar that trembles is no help');
  endsAt(3000);
  extentIs(0.2, false);
  assert.equal(spacer.style.height, '15000px');
  extentIs(1, true);
  assert.equal(spacer.style.display, 'none');
});

test('a page that the window does not scroll has no room below it', () => {
  begin(0.1, 500);
  assert.equal(spacer.style.display, 'none');
  root.computed = body.computed = { overflowY: 'auto' };
  begin(0.1, 1000);
  assert.equal(spacer.style.display, 'none', 'the body scrolls');
  root.computed = body.computed = { overflowY: 'visible' };
  begin(0, 1000);
  assert.equal(spacer.style.display, 'none', 'nobody knows how much there is to come');
});

test('the bar asks for what belongs where it is, one question at a time', async () => {
  begin(0.1, 1000);
  takeBar();
  assert.deepEqual(await scrollPage(300), [], 'all in the window is there');
  assert.deepEqual(await scrollPage(5000), [['bar', 0.5, 0]]);
  assert.deepEqual(await scrollPage(6000), [], 'not answered yet');
  now += 2000;
  extentIs(0.1, false);
  await Promise.resolve();
  assert.deepEqual(reports, [['bar', 0.6, 0]], 'an answer may never come');
});

test('what was asked for stands in the window, and the bar where it was', async () => {
  begin(0.1, 1000);
  takeBar();
  await scrollPage(5000);
  letBarGo();
  const wanted = elementAt(1000);
  endsAt(2000);
  assert.ok(showAsked(wanted, true));
  assert.equal(scrollY, 5000);
  assert.equal(shift, 4000);
  assert.equal(showAsked(wanted, true), false, 'nothing is asked for any more');
});

test('what comes in above takes off the shift', async () => {
  begin(0.1, 1000);
  takeBar();
  await scrollPage(5000);
  endsAt(2000);
  showAsked(elementAt(1000), true);
  assert.equal(takeOffShift(3000), 0);
  assert.equal(shift, 1000);
  assert.equal(takeOffShift(3000), 2000, 'the page has to scroll by the rest');
  assert.equal(shift, 0);
  assert.equal(takeOffShift(-20), -20);
});

test('the end of the document stands at the end of the bar', async () => {
  begin(0.1, 1000);
  takeBar();
  assert.deepEqual(await scrollPage(9400), [['bar', 1, 0]]);
  letBarGo();
  endsAt(1800);
  extentIs(0.15, true);
  const wanted = elementAt(1780);
  assert.ok(showAsked(wanted, false));
  assert.equal(scrollY, 9400);
  assert.equal(shift, 10_000 - 1800);
});

test('who goes to the end does not wait for what the bar has passed', async () => {
  begin(0.1, 1000);
  takeBar();
  assert.deepEqual(await scrollPage(5000), [['bar', 0.5, 0]]);
  assert.deepEqual(await scrollPage(9400), [['bar', 1, 0]]);
  endsAt(1500);
  assert.ok(showAsked(elementAt(1000), true));
  assert.equal(shift, 0, 'that answers the first question');
  endsAt(1800);
  extentIs(0.15, true);
  assert.ok(showAsked(elementAt(1780), false));
  assert.equal(shift, 8200);
});

test('nothing but the bar goes to where nothing is', async () => {
  begin(0.1, 1000);
  assert.deepEqual(await scrollPage(5000), []);
  assert.equal(scrollY, 400);
  takeBar();
  letBarGo();
  assert.deepEqual(await scrollPage(5000), [['bar', 0.5, 0]], 'the engine may tell of it after the release');
  assert.equal(scrollY, 5000);
  leaveBar();
  keepToPage();
  assert.equal(scrollY, 400);
});

test('the upper end of the page stands at the upper end of the bar', async () => {
  begin(0.1, 1000);
  takeBar();
  await scrollPage(9400);
  letBarGo();
  endsAt(1800);
  extentIs(0.15, true);
  showAsked(elementAt(1780), false);
  leaveBar();
  assert.equal(shift, 8200);
  await scrollPage(8210);
  assert.equal(shift, 0);
  assert.equal(scrollY, 10, 'what is in the window is as it was');
});

test('a page that is whole is where it belongs', async () => {
  begin(0.1, 1000);
  takeBar();
  await scrollPage(5000);
  letBarGo();
  endsAt(2000);
  showAsked(elementAt(1000), true);
  endsAt(6000);
  extentIs(1, true);
  assert.equal(scrollY, 1000);
  assert.equal(shift, 0);
});

test('a page that is whole ends where its end was in the window', async () => {
  begin(0.1, 1000);
  takeBar();
  await scrollPage(9400);
  letBarGo();
  endsAt(1800);
  extentIs(0.15, true);
  showAsked(elementAt(1780), false);
  endsAt(7000);
  takeOffShift(5200);
  assert.equal(shift, 3000);
  extentIs(1, true);
  assert.equal(scrollY, 6400);
});
