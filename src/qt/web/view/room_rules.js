// Where rooms change nothing: which elements may have them, which children may stand in them, and which may begin one.

import { addBox } from './host.js';
import { boxOf, computedStyleMapOf, getAttribute, styleOf, typeOf } from './dom.js';
import { inheritedAnew, isHandedOn, matchesAny, sheetFacts } from './sheet_facts.js';

/// Elements that are mostly blocks: where rooms are tried to begin.
export const BLOCKS = new Set(['P', 'H1', 'H2', 'H3', 'H4', 'H5', 'H6', 'UL', 'OL', 'DL', 'TABLE', 'PRE', 'HR', 'FORM',
  'CENTER', 'ADDRESS', 'FIELDSET', 'FIGURE', 'DETAILS', 'DIV', 'SECTION', 'ARTICLE', 'MAIN', 'ASIDE', 'BLOCKQUOTE',
  'HEADER', 'FOOTER', 'NAV']);
const PLAIN = new Set(['block', 'flow-root']);
const IN_FLOW = new Set([...PLAIN, 'table', 'flex', 'grid']);
const HEIGHTS = ['height', 'min-height', 'max-height'];

const initial = addBox('initial');  // has no style: what a room has, to compare with

/// A computed value as it counts for children: "auto", and not how much that is.
export const valueOf = (element, name) => String(computedStyleMapOf(element).get(name));

/// What stands before or after all children would be torn from a line of theirs, and is no position of a caret.
function isEmptyBlock(style) {
  if (/^(none|normal)$/.test(style.content)) return true;
  return /^"\s*"$/.test(style.content) && (PLAIN.has(style.display) || style.display === 'table');
}

/// Whether an element lays its children out as blocks below each other.
export function isPlain(element) {
  const style = getComputedStyle(element);
  return PLAIN.has(style.display) && style.columnCount === 'auto' && style.columnWidth === 'auto' &&
    style.writingMode === 'horizontal-tb' && style.aspectRatio === 'auto' &&
    isEmptyBlock(getComputedStyle(element, '::before')) && isEmptyBlock(getComputedStyle(element, '::after'));
}

/// Whether a child inherits from the element what a box between both doesn't hand on.
function inheritsAnew(child, element) {
  const style = getAttribute(child, 'style');
  const names = style && style.includes('inherit') ? inheritedAnew(styleOf(child)) : [];
  for (const [selector, properties] of sheetFacts().anew) if (matchesAny(child, selector)) names.push(...properties);
  return names.some((name) => valueOf(element, name) !== valueOf(initial, name));
}

/// What an element says of itself in another way than a box does, and its children might inherit from it.
function unlikeABox(element) {
  const names = [], ofABox = computedStyleMapOf(initial);
  for (const [name, values] of computedStyleMapOf(element)) {
    const isOther = String(values) !== String(ofABox.getAll(name));
    if (isOther && !isHandedOn(name) && !(name === 'display' && String(values) === 'block')) names.push(name);
  }
  return names;
}

/// Whether a child in a room inherits what a box doesn't hand on, by rules that nobody may read: it is another one when the
/// box says the same as the element.
export function inheritsUnread(room, element) {
  if (sheetFacts().readable) return false;
  const names = unlikeABox(element), { slot } = room;
  const say = (value) => names.forEach((name) => slot.style.setProperty(name, value));
  say('inherit');
  const likeIt = [];
  for (const child of room.children) {
    if (typeOf(child) !== 1) continue;
    for (const name of names) if (valueOf(child, name) === valueOf(element, name)) likeIt.push([child, name]);
  }
  say('unset');
  const inherits = likeIt.some(([child, name]) => valueOf(child, name) !== valueOf(element, name));
  slot.removeAttribute('style');
  return inherits;
}

/// Whether the first of some children that shows something is text, or a block in flow.
export function beginsAtEdge(children) {
  const first = children.find((node) => typeOf(node) === 1 || (typeOf(node) === 3 && /\S/.test(node.data)));
  return !first || typeOf(first) === 3 || beginsLine(first);
}

/// A child that is laid out by the box that it stands in. Numbers of list items and what sticks go by it, and so do
/// heights in percent of a height that is given.
export function needsItsParent(child, { element, hasHeight }) {
  if (typeOf(child) !== 1) return false;
  const style = getComputedStyle(child);
  return style.display === 'list-item' || style.position === 'sticky' ||
    (hasHeight && HEIGHTS.some((name) => valueOf(child, name).includes('%'))) || inheritsAnew(child, element);
}

/// A block in flow: what stands before it is on another line. Through one that is empty margins go on, and what is out of
/// flow after it would stand elsewhere.
export function beginsLine(node) {
  if (typeOf(node) !== 1) return false;
  const style = getComputedStyle(node);
  return IN_FLOW.has(style.display) && style.float === 'none' && style.clear === 'none' &&
    (style.position === 'static' || style.position === 'relative') && boxOf(node).height > 0;
}
