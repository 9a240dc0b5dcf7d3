// What the page's style sheets say that matters to rooms: asked of the rules once, and again when a sheet has changed.

import { matches, root, styleSheets } from './dom.js';

/// What children inherit anyway, by the names of properties and of groups of them.
const INHERITED = new RegExp('^(font|line-height|letter-spacing|word-|overflow-wrap|white-space|text-(align|indent|' +
  'transform|shadow|rendering|size-adjust|combine|orientation|emphasis|underline|anchor)|color|visibility|cursor|' +
  'direction|list-style|quotes|border-(collapse|spacing)|caption-side|empty-cells|hyphens|tab-size|orphans|widows|' +
  'user-select|-webkit-user-select|pointer-events|writing-mode|accent-color|caret-color|image-rendering|fill|stroke|' +
  '-webkit-(font|text|line|print|tap|locale)|--)');
const GIVEN_ON = /^(box-sizing|unicode-bidi)$/;

/// Whether children get a property from the element around them, whatever stands between.
export const isHandedOn = (name) => INHERITED.test(name) || GIVEN_ON.test(name);

/// The properties of a declaration that inherit what isn't inherited by itself.
export function inheritedAnew(style) {
  const names = [];
  for (const name of style) {
    if (style.getPropertyValue(name) !== 'inherit') continue;
    if (!isHandedOn(name)) names.push(name);
  }
  return names;
}

let told = null;

/// A selector of the elements that a rule may hold for, now or under the mouse, or a part of which it holds for.
function elementsOf(selector) {
  return selector.replace(/::[\w-]+(\([^)]*\))?|:(before|after|first-line|first-letter|hover|active|target|focus[\w-]*)/gi,
    ':is(*)');
}

function noteRule(rule) {
  if (rule.cssText.includes('inherit')) {
    const names = inheritedAnew(rule.style);
    if (names.length) told.anew.push([rule.selectorText, names]);
  }
  const selector = elementsOf(rule.selectorText);
  const { position } = rule.style;
  if (position && position !== 'static' && position !== 'relative' && isSelector(selector)) told.positioned.push(selector);
}

/// What is known of the sheets is to be asked again.
export function sheetsMayDiffer() {
  told = null;
}

/// `readable`: all of them; `changing`: with the window; `anew`: [[selector, properties], ...] that are inherited;
/// `positioned`: selectors of what is taken out of the flow.
export function sheetFacts() {
  if (told) return told;
  told = { readable: true, changing: false, anew: [], positioned: [] };
  const waiting = [...styleSheets()].reverse();
  while (waiting.length) {
    const group = waiting.pop();
    let rules = null;
    if (group.media && group.media.length) told.changing = true;
    try {
      rules = group.cssRules;
    } catch (error) {
      told.readable = false;  // from elsewhere: elements are asked instead
      told.changing = true;
    }
    for (const rule of rules || []) {
      if (rule.styleSheet) waiting.push(rule.styleSheet);
      if (rule.cssRules) waiting.push(rule);
      if (rule.selectorText) noteRule(rule);
    }
  }
  return told;
}

function isSelector(text) {
  try {
    matches(root(), text);
    return true;
  } catch (error) {
    return false;
  }
}

export function matchesAny(element, selector) {
  try {
    return matches(element, selector);
  } catch (error) {
    return false;
  }
}
