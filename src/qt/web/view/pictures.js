// The sizes that pictures have by themselves, which are known once they are loaded.

import { ids } from './state.js';
import { listenOn, nameOf, typeOf } from './dom.js';
import { tell } from './messages.js';

function reportPicture(event) {
  const picture = event.target;
  if (typeOf(picture) !== 1 || nameOf(picture).toUpperCase() !== 'IMG' || !ids.has(picture)) return;
  const loaded = event.type === 'load';
  tell('picture', ids.get(picture), loaded ? picture.naturalWidth : 0, loaded ? picture.naturalHeight : 0);
}

/// Of what is loaded the window hears of nothing but the page.
export function watchPictures() {
  listenOn(document, 'load', reportPicture, true);
  listenOn(document, 'error', reportPicture, true);
}
