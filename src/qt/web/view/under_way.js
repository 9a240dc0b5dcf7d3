// Pictures that are on their way to a server.

import { nodes } from './state.js';
import { removeAttribute, setAttribute } from './dom.js';

const MARK = 'tvx-under-way';
let marked = new Set();

/// `numbers`: those of nodes, with blanks after them.
export function showUnderWay(numbers) {
  const wanted = new Set(numbers.split(' ').map((id) => nodes.get(Number(id))).filter((node) => node instanceof Element));
  for (const element of marked) if (!wanted.has(element)) removeAttribute(element, MARK);
  for (const element of wanted) setAttribute(element, MARK, '');
  marked = wanted;
}
