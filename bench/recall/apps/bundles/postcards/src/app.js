import { Card } from './card';
import { viewer, account } from './tv';
import { register } from './keys';
import * as mail from './mail';

const card = new Card('Greetings from the coast');

register({
  left: () => card.turn(-90),
  right: () => card.turn(90),
  enter: () => card.show(),
  red() {
    mail.send(card, account);
  },
  green: () => viewer.ApplyFilter('sepia'),                    /* call: IMAGEVIEWER.ApplyFilter */
  yellow: () => viewer?.CropToFace?.(),                        /* call: IMAGEVIEWER.CropToFace */
  blue: async () => {
    const { default: print } = await Promise.resolve({ default: mail.print });
    print(viewer);
  }
});

card.draw();
viewer.Open();
viewer.SetPaperTexture('linen');                               /* call: IMAGEVIEWER.SetPaperTexture */
