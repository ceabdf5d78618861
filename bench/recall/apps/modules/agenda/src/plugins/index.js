export { calendar } from './calendar.js';
export { element as notification } from './notification.js';
import clock from './clock.js';
const all = { clock };
export default all;
