(this.webpackJsonp=this.webpackJsonp||[]).push([[0],{
12:function(e,t,n){e.exports=n(40)},
13:function(e,t,n){"use strict";n.r(t),n.d(t,"default",(function(){return i})),n.d(t,"grab",(function(){return r}));function r(e){return document.getElementById(e)}var i=function(){function e(e){this.t=r(e)}return e.prototype.pair=function(){return this.t.PairRaw(1),this},e}()},   /* call: REMOTE.PairRaw */
14:function(e,t){e.exports={mo:document.getElementById("mo"),go:function(e,t){return e&&t.GoAxis(e),t}}},   /* call: MOTION.GoAxis */
40:function(e,t,n){"use strict";n.r(t);var r=n(13),i=n(14),o=n.n(i);function a(e){return(a="function"==typeof Symbol?function(e){return typeof e}:function(e){return typeof e})(e)}var u=new r.default("rc").pair();u.t.BlinkIr(2);   /* call: REMOTE.BlinkIr */
o.a.go(1,o.a.mo).FuseAxes();   /* call: MOTION.FuseAxes */
Object(r.grab)("li").ReadLux16();   /* call: LIGHTSENSOR.ReadLux16 */
!function(e,t){for(var n=0;n<t.length;n++)e[t[n]]()}(Object(r.grab)("li"),["GainUp","GainDown"]);   /* call: LIGHTSENSOR.GainUp, LIGHTSENSOR.GainDown */
var c,s=(c=o()).mo;s.TareGyro(),s.a?s.b:s.TareAccel();   /* call: MOTION.TareGyro, MOTION.TareAccel */
var l={TareGyro:function(){}};l.TareGyro()}   /* decoy */
},[[12,1]]]);
