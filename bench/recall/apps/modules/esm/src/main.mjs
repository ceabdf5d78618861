import openSerial, { crypto as vault, names } from "./devices.js";
import * as jobs from "./jobs.js";
import "./side.js";

vault.WrapKey(names[0]);   /* call: CRYPTO.WrapKey */
const port = openSerial();
port.Open();
port.SetRs485(true);   /* call: SERIALPORT.SetRs485 */
jobs.digest(vault);
jobs.default(port);
const { late } = await import("./late.js");
late(port);
export { port as default, vault };
