;(function (doc, undefined) {
  'use strict'

  var box = doc.getElementById('plugins')
  var cam = box.firstElementChild
  cam.SetFlicker(50)   /* call: CAMERA.SetFlicker */
  box.children[1].SetTapZone(4)   /* call: MOTION.SetTapZone */
  box.lastElementChild.SetAutofire(1)   /* call: GAMEPAD.SetAutofire */
  cam.nextElementSibling.SetDropDetect(0)   /* call: MOTION.SetDropDetect */

  doc.getElementsByClassName('tv-pad')[0].GetStickMap()   /* call: GAMEPAD.GetStickMap */
  doc.querySelector('#plugins .tv-cam').SetCrop(0, 0, 1, 1)   /* call: CAMERA.SetCrop */
  doc.querySelector('object[classid$=MOTION]').SetFreefall(9.81)   /* call: MOTION.SetFreefall */

  var all = doc.querySelectorAll('object'), i, p
  for (i = 0; i < all.length; i++) {
    p = all.item(i)
    if (/GAMEPAD/.test(p.getAttribute('classid'))) p.ClaimPad(i)   /* call: GAMEPAD.ClaimPad */
  }
  Array.prototype.filter.call(doc.getElementsByTagName('object'), function (o) {
    return o.className === 'tv-mot'
  }).map(function (o) { return o.ReadTilt() })   /* call: MOTION.ReadTilt */

  var walker = doc.createTreeWalker(box, NodeFilter.SHOW_ELEMENT)
  while (walker.nextNode()) {
    var n = walker.currentNode
    n.id === 'c1' && n.ProbeLens()   /* call: CAMERA.ProbeLens */
  }
  doc.getElementById('m1').parentNode.querySelector('.tv-pad').UnpairAll()   /* call: GAMEPAD.UnpairAll */
  box.querySelector('#c1').closest('object').SetStrobe(2)   /* call: CAMERA.SetStrobe */
  var byAll = doc.all
  byAll['m1'].SetStepGoal(100)   /* call: MOTION.SetStepGoal */
  box.SetStrobe = function () {}
  box.SetStrobe(1)   /* decoy */
  doc.body.children[0].SetStrobe(3)   /* decoy */
}(document))
