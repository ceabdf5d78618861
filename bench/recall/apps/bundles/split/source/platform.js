export const platform = {
  get keyboard() { return document.getElementById("kbd"); },
  broadcast: document.getElementById("bcast"),
  fake: { SetNitVersion() {}, SetThemeAll() {} },
};
platform.fake.SetThemeAll();   /* decoy */
