#pragma once

// Of one worker process; MiB and seconds.
struct WorkerBounds {
  unsigned timeout = 60;
  unsigned besides = 0;  // seconds on top of that, for what has a bound of its own
  unsigned memory = 1024;
  unsigned threads = 1;      // that work in it, and reserve address space of their own beside the memory
  unsigned unpacked = 2048;  // that the packages of the application expand to; for the work to keep
  unsigned sent = 256;       // that the worker sends
};
