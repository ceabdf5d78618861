import { usePlugin, PluginContext } from "./plugin.jsx";
const { useEffect, useRef, useState, useCallback, useContext, Component } = React;

function Player({ url, onState }) {
  const player = usePlugin("pv");
  const [n, setN] = useState(0);
  useEffect(() => {
    player.Open(url);
    player.AttachTelemetry(url);   /* call: PLAYER.AttachTelemetry */
    setN(1);
    const t = setTimeout(() => player.SampleBitrate(), 5);   /* call: PLAYER.SampleBitrate */
    return () => { clearTimeout(t); player.DetachTelemetry(); };   /* call: PLAYER.DetachTelemetry */
  }, [url]);
  const seek = useCallback((e) => player.ScrubTo(e.type, -1), [player]);   /* call: PLAYER.ScrubTo */
  onState(player);
  return <div onClick={seek}><Osd n={n} /><button onClick={() => player.TogglePip(n)}>pip</button></div>;   /* call: PLAYER.TogglePip */
}
function Osd({ n }) {
  const { note } = useContext(PluginContext);
  const plugin = useRef(null);
  useEffect(() => { plugin.current.SetGammaLut(n); }, [n]);   /* call: DISPLAY.SetGammaLut */
  return <div><object ref={plugin} classID="clsid:MORVANE-NAVERTIX-DISPLAY" />{String(note.GetUnseen())}</div>;   /* call: NOTIFICATION.GetUnseen */
}
class Toast extends Component {
  static contextType = PluginContext;
  state = { shown: 0 };
  componentDidMount() { this.context.note.ShowMessage("hi"); this.context.note.SetLifetime(3); }   /* call: NOTIFICATION.SetLifetime */
  componentWillUnmount() { this.context.note.DismissAll(); }   /* call: NOTIFICATION.DismissAll */
  render() { return <PluginContext.Consumer>{({ note }) => <i>{String(note.GetStackDepth())}</i>}</PluginContext.Consumer>; }   /* call: NOTIFICATION.GetStackDepth */
}
const root = ReactDOM.createRoot(document.getElementById("root"));
const onState = (p) => p.MarkRender();   /* call: PLAYER.MarkRender */
const App = ({ on }) => <PluginContext.Provider value={{ note: document.getElementById("nt") }}>{on ? <><Player url="a" onState={onState} /><Toast /></> : null}</PluginContext.Provider>;
root.render(<App on />);
setTimeout(() => root.render(<App />), 600);
