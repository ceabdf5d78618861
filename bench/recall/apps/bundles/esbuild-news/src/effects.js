import { fonts, messages, network } from './platform.js';

// What is done beside the state: one function for a type of action.
export const effects = {
  loaded({ articles }) {
    for (const { urgent, title } of articles) {
      if (urgent) {
        messages.ShowMessage(title);
        messages.RaisePriority(title); /* call: NOTIFICATION.RaisePriority */
      }
    }
    network.SleepRadio(); /* call: NETWORK.SleepRadio */
  },
  size({ size }) {
    fonts.SetBaseSize(size); /* call: FONT.SetBaseSize */
  },
  move() {
    messages['DismissAll'](); /* call: NOTIFICATION.DismissAll */
  },
};

export const middleware = (state, action) => {
  const effect = effects[action.type];
  if (effect) effect(state);
};
