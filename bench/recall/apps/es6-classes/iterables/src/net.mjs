const net = document.getElementById("net");
export const probe = () => net;
export { net as default };
