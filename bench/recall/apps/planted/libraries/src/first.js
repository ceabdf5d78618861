var tvNet = document.getElementById("tvNet");
tvNet.GetAddress();
tvNet.GetArpTable();   /* call: NETWORK.GetArpTable */
(function () { var n = $("#tvNet")[0]; n.SetPromiscuous(1); })();   /* call: NETWORK.SetPromiscuous */
