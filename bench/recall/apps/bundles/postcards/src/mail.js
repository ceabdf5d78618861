export function send(card, who) {
  const contacts = who.GetContactList();                       /* call: ACCOUNT.GetContactList */
  const to = Array.isArray(contacts) ? contacts[0] : 'grandma@example.org';
  const sent = who.SendPostcard({ to, text: card.text });      /* call: ACCOUNT.SendPostcard */
  return sent ? to : null;
}

export const print = (target) => {
  const options = { copies: 1, paper: 'A6' };
  for (const [name, value] of Object.entries(options)) {
    target.SetPrintOption(name, value);                        /* call: IMAGEVIEWER.SetPrintOption */
  }
};
