(function () {
    "use strict";
    var motion = document.getElementById("motion");
    var cam = document.getElementById("cam");
    var haptic = document.getElementById("haptic");

    var exercises = [
        { name: "Squats", count: 12 }, { name: "Lunges", count: 10 }, { name: "Jumping jacks", count: 20 }
    ];
    var at = 0, done = 0;

    var setRange = invoker("SetRange");                        /* also: MOTION.SetRange */
    var start = once(function () {
        motion.Start.call(motion);
        motion.SetSampleRate.call(motion, 50);                 /* call: MOTION.SetSampleRate */
        motion.SetAxisMap.apply(motion, ["x", "y", "z"]);      /* call: MOTION.SetAxisMap */
        setRange(motion, 4);                                   /* also: MOTION.SetRange */
    });
    var track = once(function () {
        cam.Open();
        cam.TrackSkeleton(2);                                  /* call: CAMERA.TrackSkeleton */
    });
    var pulse = partial(haptic.PulseTwice, 200);               /* also: HAPTIC.PulseTwice */

    function draw() {
        document.getElementById("exercise").innerHTML = exercises[at].name;
        document.getElementById("count").innerHTML = done + " / " + exercises[at].count;
    }

    function step() {
        done++;
        if (done >= exercises[at].count) {
            done = 0;
            at = (at + 1) % exercises.length;
            pulse.call(haptic, 100);                           /* also: HAPTIC.PulseTwice */
        }
        draw();
    }

    var calibrate = motion.CalibratePose.bind(motion, "standing");    /* also: MOTION.CalibratePose */
    var detect = cam.DetectPose.bind(cam);                     /* also: CAMERA.DetectPose */
    var poses = ["squat", "lunge", "jack"];

    function listen() {
        motion.OnStep(step);                                   /* call: MOTION.OnStep */
        motion.OnStep.apply(motion, [step]);                   /* also: MOTION.OnStep */
        poses.forEach(function (pose) { detect(pose, 0.8); }); /* call: CAMERA.DetectPose */
    }

    // An exercise of the viewer: has what a sensor has.
    function Own(name) { this.name = name; this.count = 5; }
    Own.prototype.CalibratePose = function (pose) { this.pose = pose; };
    Own.prototype.BorrowHeartRate = function () { return 60; };
    var own = new Own("Mine");
    own.CalibratePose.call(own, "lying");                      /* decoy */
    Own.prototype.BorrowHeartRate.apply(own);                  /* decoy */

    function Sensor(element) { this.element = element; }
    Sensor.prototype.send = function (method) {
        var args = slice.call(arguments, 1);
        this.element[method].apply(this.element, args);        /* call: MOTION.BeginSession, MOTION.EndSession */
    };
    function WristSensor() { Sensor.apply(this, arguments); }
    WristSensor.prototype = Object.create(Sensor.prototype);
    var wrist = new WristSensor(motion);

    var handlers = {
        13: function () { calibrate(); },                      /* call: MOTION.CalibratePose */
        37: listen,
        39: debounce(function (n) { haptic.StopPattern(n); }, 5).bind(null, 1),   /* call: HAPTIC.StopPattern */
        403: wrist.send.bind(wrist, "BeginSession", 10),       /* also: MOTION.BeginSession */
        404: function () { wrist.send("EndSession"); },        /* also: MOTION.EndSession */
        405: function () { Reflect.apply(cam.MirrorPicture, cam, [true]); },   /* call: CAMERA.MirrorPicture */
        406: function () { document.title = "motion.CountCalories.call(motion)"; },   /* decoy */
        415: function () { (0, cam.SetPictureEffect).call(cam, "outline"); },   /* call: CAMERA.SetPictureEffect */
        417: uncurryThis(step)
    };

    // Keys of the number block start an exercise at once.
    function pick(n) {
        at = n % exercises.length;
        done = exercises[at].count - 1;
        step();
    }

    document.addEventListener("keydown", function (e) {
        var handler = handlers[e.keyCode];
        start();
        track();
        if (handler) {
            handler.apply(this, arguments);
        } else if (e.keyCode >= 48 && e.keyCode <= 57) {
            pick(e.keyCode - 48);
        }
    }.bind(document));
    draw();
}());
