  // --- commands from above ---

  const commands = {
    patch: applyPatch,
    select: select,
    ask: ask,
    mode: (isEditable, placesFreely) => {
      editable = isEditable;
      freePlacement = placesFreely;
      factsLater();
      drawOverlay();
    },
    focus: (isFocused, flashTime) => {
      focused = isFocused;
      caret.style.animationDuration = flashTime + 'ms';
      drawOverlay();
      restartBlink();
    },
    endDrag: endDrag,
    // Something from another program hovers over the window, or has left it.
    hover: (x, y) => {
      autoscroll(x, y);
      showDropCaret(x, y);
    },
    leave: () => hide(dropCaret),
    scroll: (x, y) => window.scrollTo(x, y),
    reveal: (id, atTop) => {
      const node = nodes.get(id);
      if (node instanceof Element) node.scrollIntoView(atTop);
    },
    beat: () => tell('beat'),
  };

  /// What the overlay shows, for who looks from outside of this closure (in this world alone): boxes of the
  /// window by their names, and whether the frame's element can be moved.
  view.drawn = () => {
    const shown = {};
    for (const [name, box] of Object.entries({ caret, frame, outline, guide, drop: dropCaret, cell: cellFrame })) {
      if (box.style.display !== 'block') continue;
      const rect = box.getBoundingClientRect();
      shown[name] = [rect.left, rect.top, rect.width, rect.height].map(Math.round);
    }
    shown.underlined = underlines.childElementCount;
    shown.movable = Boolean(shown.frame && isMovable(nodes.get(control)));
    return shown;
  };

  function begin(css) {
    const sheet = new CSSStyleSheet();
    sheet.replaceSync(css);
    document.adoptedStyleSheets = [sheet];
  }

  new QWebChannel(qt.webChannelTransport, (channel) => {
    bridge = channel.objects.bridge;
    bridge.down.connect((text) => {
      const begin = performance.now();
      const [forPage, command, ...rest] = JSON.parse(text);
      if (forPage === page) commands[command](...rest);
      // Until the page gets to its next task nothing else is answered, no key and no click.
      later(() => {
        view.longestStall = Math.max(view.longestStall || 0, performance.now() - begin);
      });
    });
    begin(TVX_SHEET);
    tell('ready');
  });
})();
