// tv.camera.StartPreview(): the plug-in is made when it is first named, and every call is counted.
const nodes = new Map();
export const statistics = {};

function node(name) {
  if (!nodes.has(name)) {
    const element = document.createElement('object');
    element.setAttribute('classid', `clsid:MORVANE-NAVERTIX-${name.toUpperCase()}`);
    document.body.append(element);
    nodes.set(name, element);
  }
  return nodes.get(name);
}

const counted = (name) => new Proxy(node(name), {
  get(target, method) {
    const value = target[method];
    if (typeof value !== 'function') return value;
    return (...args) => {
      statistics[method] = (statistics[method] || 0) + 1;
      return value.apply(target, args);   /* also: CAMERA.SetSelfTimer, CAMERA.SetFlashMode, IMAGEVIEWER.SetFrameStyle, AUDIO.PlayShutter, LIGHTSENSOR.SuggestExposure */
    };
  },
});

export default new Proxy({}, {
  get: (cache, name) => cache[name] || (cache[name] = counted(name)),
});

export { node };
