export const crypto = document.getElementById("tvCrypto");
export const names = ["k1", "k2"];
export default function openSerial() { return document.getElementById("tvSerial"); }
export class Fake { WrapKey() {} DigestFile() {} }
