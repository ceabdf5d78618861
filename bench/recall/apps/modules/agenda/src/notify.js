import { element } from './plugins/notification.js';

export const notify = (text) => element.ShowMessage(text);

export default class Notifier {
  constructor(target) {
    this.target = target;
  }
  urgent(text) {
    this.target.ShowFullscreen(text);                          /* call: NOTIFICATION.ShowFullscreen */
    this.target.RepeatSound(3);                                /* call: NOTIFICATION.RepeatSound */
  }
}
