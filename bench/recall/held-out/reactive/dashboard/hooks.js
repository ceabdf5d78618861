const { useState, useEffect, useRef, useCallback, useMemo, useContext, createContext, createElement: h, Component } = React;

const Plugins = createContext(null);

function usePlugin(name) {
  const plugins = useContext(Plugins);
  return plugins[name];
}

function useInterval(callback, ms) {
  const saved = useRef(callback);
  saved.current = callback;
  useEffect(() => {
    const timer = setInterval(() => saved.current(), ms);
    return () => clearInterval(timer);
  }, [ms]);
}

function useKey(code, handler) {
  useEffect(() => {
    const listener = (e) => { if (e.keyCode === code) handler(e); };
    document.addEventListener('keydown', listener);
    return () => document.removeEventListener('keydown', listener);
  }, [code, handler]);
}
