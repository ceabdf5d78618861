// What a key does: [where, method, argument]. "set" is the teletext of the set, "view" our own index of pages,
// "entry" the field for the number.
var KEYS = {
    33: ["set", "NextPage", 1],
    34: ["set", "PreviousPage", 1],
    38: ["view", "MoveCursor", -1],               /* decoy */
    40: ["view", "MoveCursor", 1],                /* decoy */
    13: ["view", "OpenSelected", 0],              /* decoy */
    403: ["set", "FollowRedLink", 1],             /* also: TELETEXT.FollowRedLink */
    404: ["set", "FollowGreenLink", 1],           /* also: TELETEXT.FollowGreenLink */
    405: ["view", "Expand", true],                /* decoy */
    406: ["view", "Collapse", true],              /* decoy */
    412: ["set", "HoldSubpage", true],            /* also: TELETEXT.HoldSubpage */
    417: ["set", "RevealHidden", true],           /* also: TELETEXT.RevealHidden */
    8: ["entry", "DeleteDigit", 1],               /* decoy */
    27: ["entry", "Abandon", 0]                   /* decoy */
};
