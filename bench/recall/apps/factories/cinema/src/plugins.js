// Makes the element of a plug-in. There is one of each.
function createPlugin(kind) {
    var element = document.createElement("object");
    element.id = "plugin" + kind;
    element.setAttribute("classid", "clsid:MORVANE-NAVERTIX-" + kind.toUpperCase());
    document.body.appendChild(element);
    return element;
}

var PluginFactory = {
    player: function () { return createPlugin("Player"); },
    drm: function () {
        var drm = createPlugin("Drm");
        drm.Open();
        drm.SetClientCertificate("certs/cinema.pem");          /* call: DRM.SetClientCertificate */
        return drm;
    },
    subtitle: createPlugin.bind(null, "Subtitle"),
    fake: function () {
        return { Play: function () {}, SetClientCertificate: function () {}, SetHdcpLevel: function () {} };
    }
};

app.register("player", [], PluginFactory.player)
   .register("drm", [], PluginFactory.drm)
   .register("subtitle", [], PluginFactory.subtitle)
   .register("fake", [], PluginFactory.fake);
