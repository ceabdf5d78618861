export function createStore(reducer, state) {
  const listeners = new Set();
  return {
    getState: () => state,
    dispatch(action) {
      state = reducer(state, action);
      listeners.forEach((listener) => listener(state, action));
      return action;
    },
    subscribe(listener) {
      listeners.add(listener);
      return () => listeners.delete(listener);
    },
  };
}

export const initial = { articles: [], selected: 0, size: 24 };

export function reducer(state, action) {
  switch (action.type) {
    case 'loaded':
      return { ...state, articles: action.articles };
    case 'move':
      return { ...state, selected: Math.max(0, Math.min(state.articles.length - 1, state.selected + action.by)) };
    case 'size':
      return { ...state, size: state.size === 24 ? 32 : 24 };
    default:
      return state;
  }
}
