const plugins = {
  async account() { return document.getElementById('account'); },
  async security() {
    const plugin = document.getElementById('security');
    plugin.Open();
    return plugin;
  },
};

const sleep = (ms) => new Promise((resolve) => setTimeout(resolve, ms));

async function getJson(url) {
  const response = await fetch(url);
  if (!response.ok) throw new Error(`${url}: ${response.status}`);
  return response.json();
}

async function retry(task, times = 2) {
  for (let attempt = 1; ; attempt++) {
    try {
      return await task(attempt);
    } catch (error) {
      if (attempt >= times) throw error;
      await sleep(10 * attempt);
    }
  }
}
