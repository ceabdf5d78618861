window.Legacy = { drm: document.getElementById('drm') };
