export { default as net, probe } from './net.mjs';
export const withDevice = (id, fn) => fn({ el: document.querySelector('#' + id), opts: void 0 });
export let hdmi;
{ const { hd } = window; hdmi = hd; }
