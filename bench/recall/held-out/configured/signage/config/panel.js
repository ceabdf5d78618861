// Written by the shop's tool.
var PANEL = {
  id: 7,
  hours: { on: "EnablePanel", off: "DisablePanel" },      /* call: POWER.EnablePanel, POWER.DisablePanel */
  brightness: { method: "SetPanelLevel", value: 80 }      /* call: DISPLAY.SetPanelLevel */
};
