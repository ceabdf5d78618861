const tv = (() => {
  const sleep = (ms) => new Promise((resolve) => setTimeout(resolve, ms));

  class TvError extends Error {
    constructor(method, code) {
      super(`${method} failed: ${code}`);
      this.code = code;
    }
  }

  // Plug-ins tell failure by a negative value. A few need a moment before they are ready.
  async function call(plugin, method, ...args) {
    let result = 0;
    for (let attempt = 0; attempt < 3; attempt++) {
      result = plugin[method](...args);   /* call: RECORDER.GetSeriesList, RECORDER.ProtectRecording, FILESTORE.GetVolumeLabel, FILESTORE.CheckVolume */
      if (!(result < 0)) return result;
      await sleep(100 * (attempt + 1));
    }
    throw new TvError(method, result);
  }

  // Plug-ins that take a function to answer to.
  const promisify = (plugin, method) => (...args) =>
    new Promise((resolve) => plugin[method](...args, resolve));   /* call: RECORDER.CreateThumbnail */

  const byId = (id) => document.getElementById(id);

  return { call, promisify, byId, sleep, TvError };
})();
