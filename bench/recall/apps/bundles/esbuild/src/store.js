const byId = (id) => document.getElementById(id);
export const store = { rec: byId("rec"), player: byId("play"), screen: byId("scr") };
export const cut = (p) => p.CutSegment(1, 2);   /* call: RECORDER.CutSegment */
