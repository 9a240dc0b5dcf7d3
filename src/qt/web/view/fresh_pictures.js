// Pictures whose address is said once more, because another picture is there now. The engine keeps what a page has once shown
// and shows it for the same address, so the page has a number after the address then. The file that it leads to is the same.

import { baseOf, getAttribute, nameOf } from './dom.js';

const freshNumbers = new Map();   // by whole address
const saidAddresses = new WeakMap();  // what the document says, by the pictures whose address has a number

const isPicture = (element, name) => name === 'src' && nameOf(element) === 'IMG';

/// The whole address of a file of this computer; nothing for any other.
function fileAddress(value) {
  try {
    const { protocol, href } = new URL(value, baseOf(document));
    return protocol === 'file:' ? href : null;
  } catch (error) {
    return null;
  }
}

/// Another picture is there if the element has this address already.
export function notePicture(element, name, value) {
  if (!isPicture(element, name)) return;
  const before = saidAddresses.has(element) ? saidAddresses.get(element) : getAttribute(element, name);
  const file = before === value ? fileAddress(value) : null;
  if (file) freshNumbers.set(file, (freshNumbers.get(file) || 0) + 1);
}

/// The address as the page is to have it.
export function freshAddress(element, name, value) {
  if (!freshNumbers.size || !isPicture(element, name)) return value;
  const number = freshNumbers.get(fileAddress(value));
  if (!number) {
    saidAddresses.delete(element);
    return value;
  }
  saidAddresses.set(element, value);
  const [file, fragment] = value.split(/(?=#)/);
  return file + (file.includes('?') ? '&' : '?') + 'tvx=' + number + (fragment || '');
}
