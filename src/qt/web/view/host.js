// The element that holds what editing draws over the page: the last child of the root, after BODY, where it shifts no
// position. What is in it stands in a shadow root.

import { getAttribute, insertBefore, newElement, nextOf, parentOf, root, setAttribute } from './dom.js';

export const host = newElement('tvx-host');
host.style.cssText = 'all:initial!important;position:absolute!important;left:0!important;top:0!important;' +
  'width:0!important;height:0!important;display:block!important;pointer-events:none!important;' +
  'z-index:2147483647!important';
const shadow = host.attachShadow({ mode: 'closed' });
const overlaySheet = new CSSStyleSheet();
overlaySheet.replaceSync(TVX_SHEETS.overlay);
shadow.adoptedStyleSheets = [overlaySheet];

// A page whose base is in the web stands under a local address, too, for the sake of local pictures and sheets. This is
// its base: the document's own BASE comes down as an element that means nothing.
const address = getAttribute(root(), 'tvx-address');
if (address) setAttribute(host.appendChild(newElement('base')), 'href', address);

export function addBox(className, parent = shadow) {
  const box = parent.appendChild(newElement('div'));
  box.className = className;
  return box;
}

let standsIn = null;

/// What stands in the same element stands before the host.
export const isInElementOfHost = (parent) => parent === standsIn;

export function keepHost() {
  const top = standsIn = root();
  if (top && (parentOf(host) !== top || nextOf(host))) insertBefore(top, host, null);
}

let questionsBeneath = 0;

/// Asks the page as if nothing were drawn over it.
export function beneath(question) {
  if (questionsBeneath++ === 0) host.classList.add('through');
  try {
    return question();
  } finally {
    if (--questionsBeneath === 0) host.classList.remove('through');
  }
}
