hotel.inject(function (room, power) {
  var nav = document.getElementById("menu");
  document.getElementById("welcome").textContent = "Welcome to room " + room.number + ", " + room.guest;
  power.RegisterProximityWake(room.number);             /* call: POWER.RegisterProximityWake */

  document.addEventListener("keydown", function (e) {
    if (e.keyCode >= 49 && e.keyCode < 49 + mainScreen.items.length) {
      mainScreen.index = e.keyCode - 49;
      mainScreen.choose();
    } else if (e.keyCode === 38) {
      mainScreen.move(-1);
    } else if (e.keyCode === 40) {
      mainScreen.move(1);
    } else if (e.keyCode === 13) {
      mainScreen.choose();
    }
    mainScreen.draw(nav);
  });
  mainScreen.draw(nav);
  setTimeout(function () {
    // Checkout at noon: power.ForceOff() is done by the reception     /* decoy */
    hotel.get("channel").ResetParentalHistory();        /* call: CHANNEL.ResetParentalHistory */
  }, 50);
});
