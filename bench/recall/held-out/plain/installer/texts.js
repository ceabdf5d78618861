var TEXTS = {
  en: { language: "Language", country: "Country", aerial: "How is the set connected?", network: "Network", scan: "Searching for channels",
    account: "Your account", done: "Ready. Enjoy!", hint: "OK to go on, BACK for the step before" },
  de: { language: "Sprache", country: "Land", aerial: "Wie ist das Ger\u00e4t angeschlossen?", network: "Netz", scan: "Sendersuche",
    account: "Ihr Konto", done: "Fertig. Viel Freude!", hint: "OK f\u00fcr weiter, BACK f\u00fcr zur\u00fcck" }
};
