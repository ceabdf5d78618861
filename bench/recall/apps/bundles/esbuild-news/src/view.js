const escape = (text) => text.replace(/[&<]/g, (c) => ({ '&': '&amp;', '<': '&lt;' })[c]);

// Sizes of headlines, kept as the set keeps them.
const metrics = { sizes: [], SetBaseSize(size) { this.sizes.push(size); return this; }, DismissAll() { this.sizes.length = 0; } };
metrics.SetBaseSize(24).DismissAll(); /* decoy */

export default (root) => (state) => {
  const article = state.articles[state.selected];
  root.style.fontSize = `${state.size}px`;
  root.innerHTML = article ? `<h1>${escape(article.title)}</h1><p>${escape(article.text)}</p>` : '…';
};
