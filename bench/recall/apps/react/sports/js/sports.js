const fakeRecorder = { MarkHighlight() {}, CutClip() {} };

function Game({ game, selected, onPick, recorder }) {
  const pick = () => {
    onPick(game);
    recorder.MarkHighlight(game.id);                           /* call: RECORDER.MarkHighlight */
  };
  return h('li', { className: selected ? 'on' : '', onClick: pick }, `${game.home} - ${game.away} ${game.score}`);
}

function GameList({ onPick, picked }) {
  const games = useScores();
  const recorder = usePlugin('recorder');
  const sorted = useMemo(() => [...games].sort((a, b) => a.id - b.id), [games]);
  return h('ul', null, sorted.map((game) =>
    h(Game, { key: game.id, game, onPick, recorder, selected: picked && picked.id === game.id })));
}

function Screen({ game }) {
  const ref = useRef(null);
  const service = usePlugin('service');
  useEffect(() => {
    const element = ref.current;
    element.SetCropWindow(0, 0, 16, 9);                        /* call: PLAYER.SetCropWindow */
    return () => element.FreezeLastFrame();                    /* call: PLAYER.FreezeLastFrame */
  }, []);
  useEffect(() => {
    if (game) {
      service.SelectService(game.id);
      service.SetCommentary('home');                           /* call: BROADCAST.SetCommentary */
    }
  }, [game, service]);
  return h('object', { ref, classID: 'clsid:MORVANE-NAVERTIX-PLAYER', id: 'inner' });
}

class Clips extends React.Component {
  static contextType = PluginContext;
  state = { count: 0 };
  componentDidMount() {
    this.recorder = this.context.recorder;
    this.recorder.ReserveSpace(500);                           /* call: RECORDER.ReserveSpace */
  }
  cut = () => {
    this.recorder.CutClip(-10, 5);                             /* call: RECORDER.CutClip */
    fakeRecorder.CutClip(-10, 5);                              /* decoy */
    this.setState(({ count }) => ({ count: count + 1 }));
  };
  render() {
    return h('button', { onClick: this.cut }, `Clips: ${this.state.count}`);
  }
}

function withRecorder(Inner) {
  return function Wrapped(props) {
    return h(PluginContext.Consumer, null, (plugins) => h(Inner, { ...props, recorder: plugins.recorder }));
  };
}

const Share = withRecorder(({ recorder, game }) =>
  h('button', { onClick: () => recorder.ShareClip(game && game.id) }, 'Share'));   /* call: RECORDER.ShareClip */

function App() {
  const [picked, setPicked] = useState(null);
  const [full, setFull] = useState(false);
  const service = usePlugin('service');
  useKey(403, useCallback(() => setFull((old) => !old), []));
  useKey(404, useCallback(() => {
    service.CycleCamera(1);                                    /* call: BROADCAST.CycleCamera */
  }, [service]));
  useKey(405, useCallback(() => { document.title = 'service.OpenStadiumMap()'; }, []));   /* decoy */
  return h('main', null,
    h('h1', null, 'Sports', full ? ' (full)' : ''),
    full ? null : h(Screen, { game: picked }),
    h(GameList, { onPick: setPicked, picked }),
    h(Clips), h(Share, { game: picked }));
}

const plugins = { service: document.getElementById('bcast'), recorder: document.getElementById('rec') };
fakeRecorder.MarkHighlight(0);                                 /* decoy */
ReactDOM.createRoot(document.getElementById('root')).render(
  h(PluginContext.Provider, { value: plugins }, h(App)));
