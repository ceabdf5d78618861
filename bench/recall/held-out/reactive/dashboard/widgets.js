function ClockWidget({ zone }) {
  const clock = usePlugin('clock');
  const [time, setTime] = useState('');
  useInterval(() => setTime(clock.GetZonedTime(zone)), 100);          /* call: CLOCK.GetZonedTime */
  useEffect(() => {
    clock.SetTimeZone(zone);
    clock.EnableSeconds(true);                                        /* call: CLOCK.EnableSeconds */
    return () => clock.EnableSeconds(false);                          /* also: CLOCK.EnableSeconds */
  }, [zone]);
  return h('section', { className: 'clock' }, time);
}

class LightWidget extends Component {
  constructor(props) {
    super(props);
    this.state = { level: 0 };
    this.read = this.read.bind(this);
  }

  static contextType = Plugins;

  componentDidMount() {
    const { light } = this.context;
    light.Start();
    light.SetRange && light.SetRange(0, 1000);                        /* call: LIGHTSENSOR.SetRange */
    this.timer = setInterval(this.read, 80);
  }

  componentWillUnmount() {
    clearInterval(this.timer);
    this.context.light.Sleep();                                       /* call: LIGHTSENSOR.Sleep */
  }

  read() {
    this.setState({ level: this.context.light.GetLux() });            /* call: LIGHTSENSOR.GetLux */
  }

  render() {
    return h('section', { className: 'light', onClick: () => this.context.light.Recalibrate() },     /* call: LIGHTSENSOR.Recalibrate */
      `${this.state.level} lx`);
  }
}

const NetWidget = React.memo(function NetWidget({ plugin, onReport }) {
  const host = useRef(null);
  const [open, setOpen] = useState(false);
  const report = useCallback(() => {
    plugin.RunDiagnostics((result) => onReport(result));              /* call: NETWORK.RunDiagnostics */
    setOpen((o) => !o);
  }, [plugin]);
  useKey(403, report);
  const address = useMemo(() => plugin.GetMacAddress(), [plugin]);    /* call: NETWORK.GetMacAddress */
  return h('section', { ref: host }, address, open && h('em', null, 'net.GetDnsServers()'));    /* decoy */
});

function Actions({ actions }) {
  return h('nav', null, actions.map(({ label, run }) => h('button', { key: label, type: 'button', onClick: run }, label)));
}
