// The sizes that pictures have by themselves, which are known once they are loaded.

import { ids } from './state.js';
import { nameOf, typeOf } from './dom.js';
import { tell } from './messages.js';

function reportPicture(event) {
  const picture = event.target;
  if (typeOf(picture) !== 1 || nameOf(picture).toUpperCase() !== 'IMG' || !ids.has(picture)) return;
  const loaded = event.type === 'load';
  tell('picture', ids.get(picture), loaded ? picture.naturalWidth : 0, loaded ? picture.naturalHeight : 0);
}

export function watchPictures() {
  window.addEventListener('load', reportPicture, true);
  window.addEventListener('error', reportPicture, true);
}
