  // --- patches ---

  function known(id) {
    const node = nodes.get(id);
    if (!node) throw new Error('unknown node ' + id);
    return node;
  }

  function put(node, parentId, beforeId) {
    const parent = parentId ? known(parentId) : document;
    let before = beforeId ? known(beforeId) : null;
    if (!before && host.parentNode === parent) before = host;
    parent.insertBefore(node, before);
  }

  function remember(id, node) {
    nodes.set(id, node);
    ids.set(node, id);
    return node;
  }

  function setAttribute(element, name, value, space) {
    if (space) {
      element.setAttributeNS(ATTRIBUTE_NAMESPACES[space], name, value);
    } else {
      element.setAttribute(name, value);
    }
  }

  function makeElement(id, parent, before, name, space, attributes) {
    const element = space ? document.createElementNS(NAMESPACES[space], name) : document.createElement(name);
    for (let i = 0; i < attributes.length; i += 3) {
      try {
        setAttribute(element, attributes[i], attributes[i + 1], attributes[i + 2]);
      } catch (error) {
        // One attribute less is no reason to lose the element.
      }
    }
    remember(id, element);
    put(element, parent, before);
  }

  function forget(root) {
    root.remove();
    const walker = document.createTreeWalker(root);
    for (let node = root; node; node = walker.nextNode()) {
      const id = ids.get(node);
      if (id !== undefined && nodes.get(id) === node) nodes.delete(id);
    }
  }

  const operations = {
    e: makeElement,
    t: (id, parent, before, text) => put(remember(id, document.createTextNode(text)), parent, before),
    c: (id, parent, before, text) => put(remember(id, document.createComment(text)), parent, before),
    d: (id) => known(id).remove(),
    p: (id, parent, before) => put(known(id), parent, before),
    f: (id) => forget(known(id)),
    x: (id, offset, length, text) => known(id).replaceData(offset, length, text),
    a: (id, name, value, space) => {
      const element = known(id);
      try {
        setAttribute(element, name, value, space);
      } catch (error) {
        // As above.
      }
    },
    n: (id, name) => known(id).removeAttribute(name),
  };

  function applyPatch(number, list) {
    if (!started) {
      started = true;
      document.documentElement.remove();
    }
    for (const operation of list) {
      try {
        const [kind, ...rest] = operation;
        operations[kind](...rest);
      } catch (error) {
        tell('failed', operation[1], String(error));
      }
    }
    keepHost();
    seen = number;
    if (document.documentElement) document.documentElement.getBoundingClientRect();
    tell('done', number);
    factsLater();
  }

