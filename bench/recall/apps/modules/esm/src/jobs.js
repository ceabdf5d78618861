import { Fake, crypto } from "./devices.js";
export { crypto as again } from "./devices.js";
export function digest(c) { c.CreateHash(); c.DigestFile("/etc/id"); }   /* call: CRYPTO.DigestFile */
const send = (p) => p.SendBreak(10);   /* call: SERIALPORT.SendBreak */
export { send as default };
new Fake().WrapKey();   /* decoy */
new Fake().DigestFile();   /* decoy */
