const { useState, useEffect, useRef, useContext, useCallback, useMemo, createContext, createElement: h } = React;

const PluginContext = createContext(null);

function usePlugin(name) {
  const plugins = useContext(PluginContext);
  return plugins[name];
}

function useKey(code, handler) {
  useEffect(() => {
    const listener = (event) => {
      if (event.keyCode === code) handler(event);
    };
    document.addEventListener('keydown', listener);
    return () => document.removeEventListener('keydown', listener);
  }, [code, handler]);
}

function useScores() {
  const [games, setGames] = useState([
    { id: 1, home: 'Harbour', away: 'Hill', score: '0:0' },
    { id: 2, home: 'North', away: 'Lake', score: '2:1' }
  ]);
  const service = usePlugin('service');
  useEffect(() => {
    service.SubscribeData('scores');                           /* call: BROADCAST.SubscribeData */
    const timer = setInterval(() => {
      setGames((old) => old.map((game) => ({ ...game, minute: (game.minute || 0) + 1 })));
    }, 50);
    return () => clearInterval(timer);
  }, [service]);
  return games;
}
