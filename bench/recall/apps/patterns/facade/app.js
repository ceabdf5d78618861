(function (tv) {
    "use strict";

    var cars = [
        { plate: "LU 100", x: 2, y: 3, price: 1200 },
        { plate: "LU 204", x: 5, y: 1, price: 900 },
        { plate: "LU 310", x: 7, y: 6, price: 1500 }
    ];
    var me = { x: 0, y: 0 }, index = 0, booked = null;

    function distance(car) {
        return Math.round(Math.sqrt(Math.pow(car.x - me.x, 2) + Math.pow(car.y - me.y, 2)));
    }

    function draw() {
        document.getElementById("map").innerHTML = cars.map(function (car, i) {
            return (i === index ? "&gt; " : "") + car.plate + " " + distance(car) + " km " + car.price / 100 + " €";
        }).join("<br>");
        document.getElementById("booking").innerHTML = booked ? "Booked: " + booked.plate : "";
    }

    function book() {
        var car = cars[index];
        if (tv.pay(car.price)) {
            booked = car;
            tv.vibrate(30);
            TV.attempt("SECURITY", "LogBooking", car.plate);        /* also: SECURITY.LogBooking */
            journal.LogBooking(car.plate);                          /* decoy */
        }
    }

    // What was booked, for the bill.
    var journal = {
        entries: [],
        LogBooking: function (plate) { this.entries.push(plate); },
        GetRegionCode: function () { return "00"; }
    };

    document.onkeydown = function (e) {
        if (e.keyCode === 38) {
            index = (index + cars.length - 1) % cars.length;
        } else if (e.keyCode === 40) {
            index = (index + 1) % cars.length;
        } else if (e.keyCode === 13) {
            book();
        } else if (e.keyCode === 403) {
            me.x = String(tv.location()).length;
            me.y = journal.GetRegionCode().length;                  /* decoy */
        } else if (e.keyCode === 404) {
            TV.attempt("NETWORK", "SetQosHint", "map");             /* also: NETWORK.SetQosHint */
        }
        draw();
    };

    tv.idle(120).tilt(function (x) {
        index = (index + x) % cars.length;
        draw();
    });
    draw();
}(TV.get()));
