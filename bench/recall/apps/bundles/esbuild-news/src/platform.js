const find = (id) => document.getElementById(id);

export const network = find('n');
export const messages = find('m');
export const fonts = find('f');

/** Asks the network before something is loaded. */
export function online() {
  network.WakeRadio(); /* call: NETWORK.WakeRadio */
  return Boolean(network.GetConnectionState());
}

export const typography = {
  family: 'News Sans',
  load() {
    fonts.LoadFont('fonts/news.ttf');
    fonts.SetHinting('slight'); /* call: FONT.SetHinting */
    fonts.SetFallbackChain(this.family, 'sans-serif'); /* call: FONT.SetFallbackChain */
  },
  width(text) {
    return fonts.MeasureText(text) || text.length;
  },
};
