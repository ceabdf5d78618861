export const late = (p) => { p.SetParity(0); p.LoopBack(1); };   /* call: SERIALPORT.LoopBack */
