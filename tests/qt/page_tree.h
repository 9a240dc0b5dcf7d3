#pragma once

namespace tvx::qt {

/// Asked in the page: its tree in the form of browser::print_mirrored.
inline constexpr char page_tree_script[] = R"js((function () {
  const spaces = {'http://www.w3.org/2000/svg': 'svg ', 'http://www.w3.org/1998/Math/MathML': 'math '};
  const quoted = (text) => '"' + text.replace(/\n/g, '\\n').replace(/[\ud800-\udfff]/gu, '\ufffd') + '"';
  // Taken from the prototypes: a form shows its controls under the same names.
  const of = (kind, name) => (node) => Object.getOwnPropertyDescriptor(kind.prototype, name).get.call(node);
  const typeOf = of(Node, 'nodeType'), nameOf = of(Node, 'nodeName'), childrenOf = of(Node, 'childNodes');
  const spaceOf = of(Element, 'namespaceURI'), localNameOf = of(Element, 'localName');
  const attributesOf = of(Element, 'attributes');
  let out = '';
  const open = [];
  const push = (node, depth) => {
    const children = childrenOf(node);
    for (let i = children.length - 1; i >= 0; --i) open.push([children[i], depth]);
  };
  push(document, 0);
  while (open.length) {
    const [node, depth] = open.pop();
    if (typeOf(node) === 10 || nameOf(node).toLowerCase() === 'tvx-host') continue;
    out += ' '.repeat(depth);
    if (typeOf(node) === 1) {
      out += '<' + (spaces[spaceOf(node)] || '') + localNameOf(node);
      for (const a of Array.from(attributesOf(node)).sort((a, b) => a.name < b.name ? -1 : 1)) {
        // The view's own: the table has selected cells, the element texts with marks.
        if (a.name === 'tvx-cells' || a.name === 'tvx-marked') continue;
        out += ' ' + a.name + '=' + quoted(a.value);
      }
      out += '>\n';
    } else {
      out += (typeOf(node) === 8 ? '!' : '') + quoted(node.data) + '\n';
    }
    push(node, depth + 1);
  }
  return out;
})())js";

}  // namespace tvx::qt
