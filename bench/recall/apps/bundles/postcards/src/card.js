import { viewer } from './tv';

export class Card {
  angle = 0;
  #photos = ['coast.jpg', 'pier.jpg', 'gulls.jpg'];
  at = 0;
  constructor(text) {
    this.text = text;
  }
  turn(by) {
    this.angle = (this.angle + by + 360) % 360;
    viewer.RotateImage(this.angle);
    viewer.KeepExif(true);                                     /* call: IMAGEVIEWER.KeepExif */
    this.draw();
  }
  show() {
    this.at = (this.at + 1) % this.#photos.length;
    viewer.ShowImage(this.#photos[this.at]);
    viewer.DrawCaption(this.text, 'bottom');                   /* call: IMAGEVIEWER.DrawCaption */
    this.draw();
  }
  draw() {
    document.getElementById('card').textContent = `${this.text} (${this.at + 1}/${this.#photos.length})`;
  }
}
