// What can be said. The first that fits counts.
var GRAMMAR = [
    { pattern: /^(?:switch|go) to (\w+)$/, plugin: "chn", method: "SetChannelByName" },
    { pattern: /^louder$/, plugin: "snd", method: "VolumeUp" },
    { pattern: /^quieter$/, plugin: "snd", method: "VolumeDown" },
    { pattern: /^whisper mode$/, plugin: "snd", method: "EnableWhisperMode" },
    { pattern: /^what is on$/, plugin: "chn", method: "SpeakProgramme" }
];

// Tried in the sales room, one after the other.
var DEMO = ["louder", "switch to news", "whisper mode", "what is on", "quieter"];
