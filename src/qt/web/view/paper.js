// What a PDF is to know of the page beside what stands on its sheets. The engine names the positions in it that links of
// the page lead to, and no others: while it is made there is a link, which nobody sees, to each heading.

import { detach, findAll, getAttribute, newElement, removeAttribute, root, setAttribute, titleOfPage, wordsOf } from './dom.js';
import { registerMarks } from './marks.js';

const NAME_START = 'tvx-heading-';
const LONGEST_HEADING = 200;
let headingLinks = null;
let namedHeadings = [];

/// The page as it was.
export function unmarkForPaper() {
  for (const heading of namedHeadings) removeAttribute(heading, 'id');
  namedHeadings = [];
  if (headingLinks) detach(headingLinks);
  headingLinks = null;
  registerMarks(true);
}

/// Names the headings, and says what there is to know, as JSON. A heading with a name keeps it.
export function markForPaper() {
  unmarkForPaper();
  registerMarks(false);
  headingLinks = newElement('div');
  setAttribute(headingLinks, 'style', 'display: none !important');
  const headings = [];
  for (const heading of findAll(root(), 'h1, h2, h3, h4, h5, h6')) {
    if (!(heading instanceof HTMLElement)) continue;
    const text = wordsOf(heading).replace(/\s+/g, ' ').trim().slice(0, LONGEST_HEADING);
    if (!text) continue;
    let name = getAttribute(heading, 'id');
    if (!name) {
      name = NAME_START + headings.length;
      setAttribute(heading, 'id', name);
      namedHeadings.push(heading);
    }
    const link = newElement('a');
    setAttribute(link, 'href', '#' + name);
    headingLinks.append(link);
    headings.push({ level: Number(heading.localName[1]), text, name });
  }
  root().append(headingLinks);
  return JSON.stringify({ title: titleOfPage(), language: getAttribute(root(), 'lang') || '', headings });
}
