#pragma once

// Opens /dev/null for standard streams that are closed: the next files that are opened must not take their place.
void openStandardStreams();

// `status`, if all that was printed to standard output has arrived. Else says so on standard error, and gives 2.
int printedWith(int status);
