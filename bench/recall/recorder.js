// Put into every frame before any script: object and embed elements with a class identifier of the platform answer each
// property that they do not have with a method, and each call of one is told through the binding.
(() => {
  const tell = window.recallCall;
  const getAttribute = Element.prototype.getAttribute;
  const later = window.setTimeout;
  const write = JSON.stringify;
  const made = new WeakMap();

  // Methods of plug-ins begin with a capital. What libraries look for on any object that they are handed does not: an
  // answer to "then", "schedule" or "__ob__" would lead them astray.
  const methodNames = /^[A-Z]/;

  const pluginOf = (element) => {
    const match = /MORVANE-NAVERTIX-([A-Z]+)/i.exec(getAttribute.call(element, "classid") || "");
    return match && match[1].toUpperCase();
  };

  const method = (plugin, name) => function (...args) {
    const called = plugin === "KOB" && name === "Execute" ? String(args[0]) : name;
    const { stackTraceLimit } = Error;
    Error.stackTraceLimit = 50;
    const { stack } = new Error();
    Error.stackTraceLimit = stackTraceLimit;
    tell(write({ plugin, method: called, stack: String(stack) }));
    for (const arg of args) {
      if (typeof arg === "function") {
        later(() => arg(1), 0);
      }
    }
    return 1;
  };

  const hook = (prototype) => {
    const base = Object.getPrototypeOf(prototype);
    Object.setPrototypeOf(prototype, new Proxy(base, {
      get(target, name, element) {
        if (typeof name === "symbol" || name in target || !methodNames.test(name) || !(element instanceof Element)) {
          return Reflect.get(target, name, element);
        }
        const plugin = pluginOf(element);
        if (!plugin) {
          return undefined;
        }
        if (!made.has(element)) {
          made.set(element, new Map());
        }
        const methods = made.get(element);
        if (!methods.has(name)) {
          methods.set(name, method(plugin, name));
        }
        return methods.get(name);
      },
      // For "with (plugin) { ... }": nobody says here which element is asked, so that a name decides, by its look.
      has: (target, name) => name in target || (/^[A-Z]\w*[a-z][A-Z]/.test(String(name)) && !(name in window)),
    }));
  };
  hook(HTMLObjectElement.prototype);
  hook(HTMLEmbedElement.prototype);
})();
