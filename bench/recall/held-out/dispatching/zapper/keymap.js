// Which key does what, by mode. [plug-in, method, arguments...] or the name of an own function.
var KEYMAP = {
  tv: {
    427: ["chan", "ChannelUp"],
    428: ["chan", "ChannelDown"],
    403: ["chan", "SwapChannels"],                      /* call: CHANNEL.SwapChannels */
    404: ["snd", "CycleLanguage", 1],                   /* call: AUDIO.CycleLanguage */
    406: "teletext",
    405: ["snd", "SetNightMode", true],                 /* call: AUDIO.SetNightMode */
    447: ["snd", "VolumeUp"],
    448: ["snd", "VolumeDown"],
    457: "banner",
    461: ["chan", "ReturnToPrevious"]                   /* call: CHANNEL.ReturnToPrevious */
  },
  text: {
    427: ["ttx", "NextPage"],
    428: ["ttx", "PreviousPage"],
    403: "red", 404: "green",
    405: ["ttx", "HoldPage", true],                     /* call: TELETEXT.HoldPage */
    457: ["ttx", "RevealHidden"],                       /* call: TELETEXT.RevealHidden */
    406: "leaveText"
  },
  // Not in this country.
  radio: {
    403: ["chan", "SwapBand"]                           /* decoy */
  }
};
