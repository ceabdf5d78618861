const { h, render, Component, createRef } = preact;
class Keys extends Component {
  node = createRef();
  componentDidMount() {
    this.props.device.SetRowCount(4);   /* call: KEYBOARD.SetRowCount */
    this.node.current.SetSubPixel(1);   /* call: SUBTITLE.SetSubPixel */
    this.setState({ device: this.props.device }, () => this.state.device.AfterState());   /* call: KEYBOARD.AfterState */
  }
  press = (e) => { this.props.device.PressVirtual(e.type); };   /* call: KEYBOARD.PressVirtual */
  render({ device, children }) {
    return h("div", { onClick: this.press }, h("object", { ref: this.node, classid: "clsid:MORVANE-NAVERTIX-SUBTITLE" }),
      children(device), String(device.GetSkin()));   /* call: KEYBOARD.GetSkin */
  }
}
const withDevice = (View, id) => (props) => h(View, { ...props, device: document.getElementById(id) });
const Wrapped = withDevice(Keys, "vk");
render(h(Wrapped, null, (d) => h("i", { ref: () => d.CountRef() }, "x")), document.getElementById("v"));   /* call: KEYBOARD.CountRef */
const fake = { device: { GetSkin: () => 0 } };
fake.device.GetSkin();   /* decoy */
