<!DOCTYPE html PUBLIC "-//W3C//DTD XHTML 1.0 Strict//EN">
<HTML><HEAD><BASE HREF="/res/"><TITLE>Home</TITLE>
<SCRIPT SRC=one.js CHARSET=utf-8></SCRIPT></HEAD><BODY>
<oBjEcT  ID=  tvMic
  CLASSID="CLSID:MORVANE-NAVERTIX-MICROPHONE"  /></object>
<p>Unclosed <b>markup <i>everywhere
<script>tvMic.SetNoiseGate(-40)</script> <!-- call: MICROPHONE.SetNoiseGate -->
<SCRIPT LANGUAGE=JavaScript1.2>first(tvMic)</SCRIPT>
<script type="application/json">tvMic.Json()</script> <!-- decoy -->
<noscript><script>tvMic.NoScript()</script></noscript> <!-- decoy -->
<img src=x.gif onerror=tvMic.SetAgcTarget(3)> <!-- call: MICROPHONE.SetAgcTarget -->
<iframe src="../main/two.htm"></iframe><embed src="pic.svg" type="image/svg+xml">
<object data="frag.html" type="text/html"></object>
<iframe src="data:text/html,<object id='d' classid='clsid:MORVANE-NAVERTIX-FONT'></object><script>d.FromDataPage(1)</script>"></iframe> <!-- text: FONT.FromDataPage -->
<!--[if IE]><script>tvMic.OnlyIe()</script><![endif]--> <!-- decoy -->
</BODY></HTML>
