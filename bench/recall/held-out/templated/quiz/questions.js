var QUESTIONS = [
  { text: "Which is the longest river?", answers: ["Nile", "Rhine", "Po"], right: 0 },
  { text: "How many strings has a guitar?", answers: ["Three", "Four", "Six"], right: 2 }
];
