import { messages, online, typography } from './platform.js';
import { createStore, initial, reducer } from './store.js';
import { middleware } from './effects.js';
import view from './view.js';

const store = createStore(reducer, initial);
store.subscribe(view(document.getElementById('root')));
store.subscribe(middleware);
typography.load();

async function load() {
  if (!online()) return;
  const reply = await fetch('articles.json');
  store.dispatch({ type: 'loaded', articles: await reply.json() });
}

const actions = new Map([
  [37, { type: 'move', by: -1 }],
  [39, { type: 'move', by: 1 }],
  [403, { type: 'size' }],
]);

addEventListener('keydown', ({ keyCode }) => {
  if (actions.has(keyCode)) store.dispatch(actions.get(keyCode));
  if (keyCode === 404) load().then(() => messages.SetDigestMode(true)); /* call: NOTIFICATION.SetDigestMode */
});

load();
