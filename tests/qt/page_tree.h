#pragma once

namespace tvx::qt {

/// Asked in the page: its tree in the form of browser::print_mirrored.
inline constexpr char page_tree_script[] = R"js((function () {
  const spaces = {'http://www.w3.org/2000/svg': 'svg ', 'http://www.w3.org/1998/Math/MathML': 'math '};
  const quoted = (text) => '"' + text.replace(/\n/g, '\\n').replace(/[\ud800-\udfff]/gu, '\ufffd') + '"';
  let out = '';
  const open = [];
  const push = (node, depth) => {
    for (let i = node.childNodes.length - 1; i >= 0; --i) open.push([node.childNodes[i], depth]);
  };
  push(document, 0);
  while (open.length) {
    const [node, depth] = open.pop();
    if (node.nodeType === 10 || node.nodeName.toLowerCase() === 'tvx-host') continue;
    out += ' '.repeat(depth);
    if (node.nodeType === 1) {
      out += '<' + (spaces[node.namespaceURI] || '') + node.localName;
      for (const a of Array.from(node.attributes).sort((a, b) => a.name < b.name ? -1 : 1)) {
        out += ' ' + a.name + '=' + quoted(a.value);
      }
      out += '>\n';
    } else {
      out += (node.nodeType === 8 ? '!' : '') + quoted(node.data) + '\n';
    }
    push(node, depth + 1);
  }
  return out;
})())js";

}  // namespace tvx::qt
