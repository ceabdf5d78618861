require.config({ paths: { devices: "devices/all" } });
define(["devices", "scan/job", "require"], function (devices, job, require) {
    devices.tuner.SetTsid(1);   /* call: TUNER.SetTsid */
    job.start(devices.scan());
    require(["late"], function (late) { late.run(devices.tuner); });
    job.on(function (p) { p.ExportLineup("csv"); });   /* call: TUNERSCAN.ExportLineup */
});
