export const sleep = (ms) => new Promise((resolve) => setTimeout(resolve, ms));

export const ready = () => document.readyState === 'loading'
  ? new Promise((resolve) => document.addEventListener('DOMContentLoaded', resolve))
  : Promise.resolve();

export async function retry(task, times) {
  for (let left = times; ; --left) {
    try {
      return await task();
    } catch (error) {
      if (left <= 1) throw error;
      await sleep(2);
    }
  }
}

export class Journal {
  constructor(target) {
    this.target = target;
    this.lines = [];
  }
  write(text) {
    this.lines.push(text);
    this.target.textContent = this.lines.slice(-20).join('\n');
  }
  // The journal is made to look like the stores that it stands for in tests.
  SwapFolders(from, to) { this.write(from + '<>' + to); }
  async CloseConnections() { this.write('closed'); }
}
