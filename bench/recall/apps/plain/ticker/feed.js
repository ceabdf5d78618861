var Feed = {
    url: "headlines.xml",
    items: [],
    onupdate: null,

    load: function () {
        var req = new XMLHttpRequest();
        req.open("GET", Feed.url, true);
        req.onreadystatechange = function () {
            if (req.readyState != 4) {
                return;
            }
            if (req.status == 200 && req.responseXML) {
                Feed.parse(req.responseXML);
            } else {
                Feed.failed(req.status);
            }
        };
        req.send(null);
    },

    parse: function (xml) {
        var nodes = xml.getElementsByTagName("item");
        Feed.items = [];
        for (var i = 0; i < nodes.length; i++) {
            Feed.items.push({
                title: Feed.text(nodes[i], "title"),
                category: Feed.text(nodes[i], "category")
            });
        }
        if (Feed.onupdate) {
            Feed.onupdate(Feed.items);
        }
        var net = document.getElementById("net");
        net.SetIdleTimeout(300);                        /* call: NETWORK.SetIdleTimeout */
    },

    text: function (node, name) {
        var found = node.getElementsByTagName(name);
        return found.length && found[0].firstChild ? found[0].firstChild.nodeValue : "";
    },

    failed: function (status) {
        var net = document.getElementById("net");
        if (!net.GetConnectionState()) {
            net.Connect();
        }
        net.ReportFailure(Feed.url, status);            /* call: NETWORK.ReportFailure */
    }
};
