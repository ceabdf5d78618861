export default document.getElementById('clock');
