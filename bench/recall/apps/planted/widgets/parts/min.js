;(function(t){var e=t("#tvPower").get(0);e&&e.GetPowerState(),e.GetGridId(),t("#tvRemote").each(function(){this.GetPairList()})})(Zepto);   /* call: POWER.GetGridId, REMOTE.GetPairList */
