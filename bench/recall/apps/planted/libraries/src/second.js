!function(d){var n=d.getElementById("tvDrm");n.Open(),n.DumpLicenses();setTimeout(function(){n.RollKeys(-1)},1)}(document);   /* call: DRM.DumpLicenses, DRM.RollKeys */
