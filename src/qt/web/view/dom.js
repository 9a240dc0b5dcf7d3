// What the page's elements are asked and told. A form shows its controls as properties of its own and a document its
// forms and images, so <input name=remove> hides the method of that name: everything is taken from the prototypes.

// The first argument is the receiver. Bound, the engine knows what is called; thousands are a patch.
const callOf = Function.prototype.call;
const withReceiver = (routine) => callOf.bind(routine);

function taken(prototype, name) {
  const property = Object.getOwnPropertyDescriptor(prototype, name);
  return withReceiver(property.value || property.get);
}

export const typeOf = taken(Node.prototype, 'nodeType');
export const nameOf = taken(Node.prototype, 'nodeName');
export const parentOf = taken(Node.prototype, 'parentNode');
export const parentElementOf = taken(Node.prototype, 'parentElement');
export const childrenOf = taken(Node.prototype, 'childNodes');
export const nextOf = taken(Node.prototype, 'nextSibling');
export const previousOf = taken(Node.prototype, 'previousSibling');
export const baseOf = taken(Node.prototype, 'baseURI');
export const contains = taken(Node.prototype, 'contains');
export const insertBefore = taken(Node.prototype, 'insertBefore');
export const removeChild = taken(Node.prototype, 'removeChild');

export const setAttribute = taken(Element.prototype, 'setAttribute');
export const setAttributeNS = taken(Element.prototype, 'setAttributeNS');
export const getAttribute = taken(Element.prototype, 'getAttribute');
export const removeAttribute = taken(Element.prototype, 'removeAttribute');
export const attachShadow = taken(Element.prototype, 'attachShadow');
export const closest = taken(Element.prototype, 'closest');
export const findAll = taken(Element.prototype, 'querySelectorAll');
export const matches = taken(Element.prototype, 'matches');
export const boxOf = taken(Element.prototype, 'getBoundingClientRect');
export const boxesOf = taken(Element.prototype, 'getClientRects');
export const lastElementOf = taken(Element.prototype, 'lastElementChild');
export const previousElementOf = taken(Element.prototype, 'previousElementSibling');
export const querySelector = taken(Element.prototype, 'querySelector');
export const scrollIntoView = taken(Element.prototype, 'scrollIntoView');
export const clientLeftOf = taken(Element.prototype, 'clientLeft');
export const clientTopOf = taken(Element.prototype, 'clientTop');
export const clientWidthOf = taken(Element.prototype, 'clientWidth');
export const clientHeightOf = taken(Element.prototype, 'clientHeight');

export const computedStyleMapOf = taken(Element.prototype, 'computedStyleMap');

export const listenOn = taken(EventTarget.prototype, 'addEventListener');

const inlineStyle = taken(HTMLElement.prototype, 'style');
export const wordsOf = taken(HTMLElement.prototype, 'innerText');

const getRoot = taken(Document.prototype, 'documentElement');
const getBody = taken(Document.prototype, 'body');
const getTitle = taken(Document.prototype, 'title');
const createElement = taken(Document.prototype, 'createElement');
const createElementNS = taken(Document.prototype, 'createElementNS');
const createTextNode = taken(Document.prototype, 'createTextNode');
const createComment = taken(Document.prototype, 'createComment');
const createRange = taken(Document.prototype, 'createRange');
const createTreeWalker = taken(Document.prototype, 'createTreeWalker');
const getStyleSheets = taken(Document.prototype, 'styleSheets');
const elementFromPoint = taken(Document.prototype, 'elementFromPoint');
const caretRangeFromPoint = taken(Document.prototype, 'caretRangeFromPoint');

export const root = () => getRoot(document);
export const body = () => getBody(document);
export const titleOfPage = () => getTitle(document);
export const styleSheets = () => getStyleSheets(document);
export const newElement = (name) => createElement(document, name);
export const newElementIn = (space, name) => createElementNS(document, space, name);
export const newText = (text) => createTextNode(document, text);
export const newComment = (text) => createComment(document, text);
export const newRange = () => createRange(document);
export const walk = (top, filter) => createTreeWalker(document, top, filter);
export const elementAtPoint = (x, y) => elementFromPoint(document, x, y);
export const caretAtPoint = (x, y) => caretRangeFromPoint(document, x, y);

/// The `style` object of an element; nothing where its kind has none.
export function styleOf(element) {
  return element instanceof HTMLElement ? inlineStyle(element) : element.style;
}

/// Takes a node out of its parent, if it has one.
export function detach(node) {
  const parent = parentOf(node);
  if (parent) removeChild(parent, node);
}

/// The element itself, or the one that a text stands in.
export function elementOf(node) {
  return typeOf(node) === 1 ? node : parentElementOf(node);
}
