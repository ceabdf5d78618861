var apps=document.getElementById("apps"),rc=document.getElementById('rc')
apps.LoadApplication("a")
apps . HideSplash ( )   /* call: APPLOADER.HideSplash */
apps
    .SetForeground("a", -1)   /* call: APPLOADER.SetForeground */
apps./* the loader's own */GetPidOf(2)   /* call: APPLOADER.GetPidOf */
apps. // to the end
    KillByPid({ pid: 3 })   /* call: APPLOADER.KillByPid */
\u0061pps.Ch\u0061ngeSlot(1)   /* call: APPLOADER.ChangeSlot */
rc["\u004cearnKey"](13)   /* call: REMOTE.LearnKey */
rc
[
  'SetKey' +   /* also: REMOTE.SetKeyTable */
  'Table'
]   /* call: REMOTE.SetKeyTable */
(   /* also: REMOTE.SetKeyTable */
  [1, 2]
)   /* also: REMOTE.SetKeyTable */
;(rc).GetVendorId(), (((rc))).PairRf4ce(), void rc.DropPairing()   /* call: REMOTE.GetVendorId, REMOTE.PairRf4ce, REMOTE.DropPairing */
!function(r){r.SetBacklit(1)}(rc);+function(){rc.GetIrPower()}()   /* call: REMOTE.SetBacklit, REMOTE.GetIrPower */
var r = rc, re = /rc.FakeCall()/g, t = "rc.FakeCall()", d = 4 / 2; rc /re/ 1   /* decoy */
if (r) r.EchoKey (function () { return "a)b(" }, /[)\]]/, `x${rc.GetRollingCode(`y`)}`)   /* call: REMOTE.EchoKey, REMOTE.GetRollingCode */
label: for (;;) { rc.RegisterKey(1); r.ReleaseGrab(); break label }   /* call: REMOTE.ReleaseGrab */
var o = { rc: { EchoKey() {} } }; o.rc.EchoKey()   /* decoy */
do apps.SuspendAll(); while (0) <!-- apps.FakeCall()   /* call: APPLOADER.SuspendAll */
apps?.ResumeAll?.()   /* call: APPLOADER.ResumeAll */
--> apps.FakeCall()
