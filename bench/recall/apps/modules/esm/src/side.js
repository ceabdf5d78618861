import { again } from "./jobs.js";
import { default as open } from "./devices.js";
again.SeedPool(4);   /* call: CRYPTO.SeedPool */
open().GetUartId();   /* call: SERIALPORT.GetUartId */
