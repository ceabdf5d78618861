export const element = document.getElementById('notification');
export function configure(options) {
  element.SetCorner(options.corner);                           /* call: NOTIFICATION.SetCorner */
  element.SetTimeout(options.timeout);
}
configure({ corner: 'top-right', timeout: 4000 });
