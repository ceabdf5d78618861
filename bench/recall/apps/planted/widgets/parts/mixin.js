_.mixin({ tv: function (id) { return document.getElementById(id); } });
_.tv("tvPower").SetTelemetry(1);   /* call: POWER.SetTelemetry */
_.each(["tvPower"], function (id) { document.getElementById(id).GetUsageLog(); });   /* call: POWER.GetUsageLog */
