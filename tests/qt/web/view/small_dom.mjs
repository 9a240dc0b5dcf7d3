// As much of a page as the view's modules need that ask no layout: a tree, boxes that a test gives, and the globals.

class Node extends EventTarget {
  #type; #name; #parent = null; #children = [];
  constructor(type, name) {
    super();
    this.#type = type;
    this.#name = name;
  }
  get nodeType() { return this.#type; }
  get nodeName() { return this.#name; }
  get baseURI() { return 'file:///site/page.html'; }
  get parentNode() { return this.#parent; }
  get parentElement() { return this.#parent instanceof Element ? this.#parent : null; }
  get childNodes() { return this.#children; }
  get nextSibling() {
    const siblings = this.#parent ? this.#parent.#children : [];
    return siblings[siblings.indexOf(this) + 1] || null;
  }
  get previousSibling() {
    const siblings = this.#parent ? this.#parent.#children : [];
    return siblings[siblings.indexOf(this) - 1] || null;
  }
  contains(other) {
    while (other && other !== this) other = other.#parent;
    return Boolean(other);
  }
  insertBefore(node, before) {
    if (Node.prototype.contains.call(node, this)) throw new Error('HierarchyRequestError');
    if (before && before.#parent !== this) throw new Error('NotFoundError');
    if (node.#parent) Node.prototype.removeChild.call(node.#parent, node);
    this.#children.splice(before ? this.#children.indexOf(before) : this.#children.length, 0, node);
    node.#parent = this;
    return node;
  }
  appendChild(node) { return Node.prototype.insertBefore.call(this, node, null); }
  removeChild(node) {
    if (node.#parent !== this) throw new Error('NotFoundError');
    this.#children.splice(this.#children.indexOf(node), 1);
    node.#parent = null;
    return node;
  }
}

class Element extends Node {
  #attributes = new Map();
  #box = { left: 0, top: 0, right: 9, bottom: 9, width: 9, height: 9 };
  #style = { cssText: '' };
  constructor(name) {
    super(1, name);
    this.classList = Object.assign(new Set(), { remove(name) { this.delete(name); } });
  }
  get style() { return this.#style; }
  getAttribute(name) { return this.#attributes.has(name) ? this.#attributes.get(name) : null; }
  setAttribute(name, value) {
    if (!/^[\w:.-]+$/.test(name)) throw new Error('InvalidCharacterError');
    this.#attributes.set(name, String(value));
  }
  setAttributeNS(space, name, value) { Element.prototype.setAttribute.call(this, name, value); }
  removeAttribute(name) { this.#attributes.delete(name); }
  querySelector(selector) {
    for (const child of this.childNodes.filter((node) => node instanceof Element)) {
      const { matches, querySelector } = Element.prototype;
      const found = matches.call(child, selector) ? child : querySelector.call(child, selector);
      if (found) return found;
    }
    return null;
  }
  /// Names, and the one selector of an attribute that the modules use.
  matches(selector) {
    return selector.split(',').some((one) => one.toUpperCase() === this.nodeName ||
      (one === '[style*="position" i]' && /position/i.test(Element.prototype.getAttribute.call(this, 'style') || '')));
  }
  querySelectorAll() { return []; }
  closest(selector) {
    const names = selector.toUpperCase().split(',');
    let element = this;
    while (element && !names.includes(element.nodeName)) element = element.parentElement;
    return element;
  }
  getBoundingClientRect() { return this.#box; }
  getClientRects() { return [this.#box]; }
  setBox(left, top, width, height) {
    this.#box = { left, top, width, height, right: left + width, bottom: top + height };
    return this;
  }
  scrollIntoView() {}
  attachShadow() {
    this.shadow = new Element('#SHADOW');  // closed in a browser; a test may see it
    return this.shadow;
  }
  assign(...nodes) { this.assigned = nodes; }
  computedStyleMap() { return { get: (name) => (this.computed && this.computed[name]) || 'auto' }; }
  remove() { if (this.parentNode) Node.prototype.removeChild.call(this.parentNode, this); }
  get clientLeft() { return 0; }
  get clientTop() { return 0; }
  get clientWidth() { return this.#box.width; }
  get clientHeight() { return this.#box.height; }
  get lastElementChild() { return this.childNodes.filter((node) => node instanceof Element).pop() || null; }
  get previousElementSibling() {
    let node = this.previousSibling;
    while (node && !(node instanceof Element)) node = node.previousSibling;
    return node;
  }
  get offsetWidth() { return this.#box.width; }
  get attributes() { return [...this.#attributes]; }
}
class HTMLElement extends Element {
  get innerText() {
    return Array.from(childNodes(this), (child) => child.innerText ?? child.data ?? '').join('');
  }
  get style() { return super.style; }
}

class Text extends Node {
  constructor(data, type = 3) {
    super(type, type === 3 ? '#text' : '#comment');
    this.data = data;
  }
  get length() { return this.data.length; }
  replaceData(offset, length, text) {
    if (offset > this.data.length) throw new Error('IndexSizeError');
    this.data = this.data.slice(0, offset) + text + this.data.slice(offset + length);
  }
}

class Document extends Node {
  constructor() { super(9, '#document'); }
  get documentElement() { return this.childNodes.find((node) => node instanceof Element) || null; }
  get body() { return this.documentElement.childNodes.find((node) => node.nodeName === 'BODY') || null; }
  get styleSheets() { return []; }
  get title() { return ''; }
  createElement(name) { return new HTMLElement(name.toUpperCase()); }
  createElementNS(space, name) { return new Element(name); }
  createTextNode(text) { return new Text(text); }
  createComment(text) { return new Text(text, 8); }
  createRange() {
    return {
      setStart(node, offset) { this.start = [node, offset]; },
      setEnd(node, offset) { this.end = offset; },
      toString() { return this.start[0].data.slice(this.start[1], this.end); },
      getClientRects() { throw new Error('nothing is laid out here'); },
    };
  }
  createTreeWalker(top) {
    let node = top;
    const after = (from) => {
      while (from !== top && !from.nextSibling) from = from.parentNode;
      return from === top ? null : from.nextSibling;
    };
    return { nextNode: () => (node = Array.from(childNodes(node))[0] || after(node)) };
  }
  elementFromPoint() { return null; }
  caretRangeFromPoint() { return null; }
}
const childNodes = (node) => Reflect.apply(Object.getOwnPropertyDescriptor(Node.prototype, 'childNodes').get, node, []);

class CSSStyleSheet {
  replaceSync() {}
}

// One that keeps no process waiting.
class MessageChannel {
  port1 = { onmessage: null };
  port2 = { postMessage: () => queueMicrotask(() => this.port1.onmessage()) };
}

const document = new Document();
document.appendChild(document.createElement('html')).setAttribute('tvx-page', '7');
Object.assign(globalThis, {
  Highlight: class extends Set {}, CSS: { highlights: new Map() }, NodeFilter: { SHOW_TEXT: 4 },
  Node, Element, HTMLElement, Document, CSSStyleSheet, MessageChannel, document, window: globalThis,
  TVX_SHEETS: { editing: '', overlay: '', rooms: '', divided: '' }, innerWidth: 800, innerHeight: 600, scrollX: 0, scrollY: 0,
  getComputedStyle: (element, pseudo) => ({
    content: 'none', clear: 'none', display: /^(A|B|I|SPAN)$/.test(element.nodeName) ? 'inline' : 'block', float: 'none', position: 'static',
    columnCount: 'auto', columnWidth: 'auto', writingMode: 'horizontal-tb', aspectRatio: 'auto',
    direction: 'ltr', borderCollapse: 'separate', borderSpacing: '0px', boxSizing: 'content-box', paddingLeft: '0px',
    paddingRight: '0px', borderLeftWidth: '0px', borderRightWidth: '0px', ...(pseudo ? element[pseudo] : element.computed),
  }),
});

/// A tree as text: <A name=value>text<!--comment--></A>.
export function printed(node) {
  if (node.nodeType === 3) return node.data;
  if (node.nodeType === 8) return `<!--${node.data}-->`;
  const inside = childNodes(node).map(printed).join('');
  if (!(node instanceof Element)) return inside;
  const name = Reflect.apply(Object.getOwnPropertyDescriptor(Node.prototype, 'nodeName').get, node, []);
  const list = Object.getOwnPropertyDescriptor(Element.prototype, 'attributes').get.call(node);
  return `<${name}${list.map(([key, value]) => ` ${key}=${value}`).join('')}>${inside}</${name}>`;
}

/// A table of rows of [left, width] cells, 20 pixels high each.
export function table(...rows) {
  const whole = document.createElement('table');
  whole.rows = rows.map((cells, rowIndex) => {
    const row = whole.appendChild(document.createElement('tr'));
    row.rowIndex = rowIndex;
    row.cells = cells.map(([left, width, colSpan = 1, height = 20]) => {
      const cell = row.appendChild(document.createElement('td'));
      cell.colSpan = colSpan;
      return cell.setBox(left, rowIndex * 20, width, height);
    });
    return row.setBox(0, rowIndex * 20, 300, 20);
  });
  return whole.setBox(0, 0, 300, 20 * rows.length);
}
