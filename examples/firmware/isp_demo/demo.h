// A small downloader for a program's own use: it speaks with the tool in frames of
//   5A A5  length(2)  command  parameters  sum(2)  16
// and puts what it gets into the flash. The length counts the whole frame, the sum all in front of it.
#ifndef DEMO_H
#define DEMO_H

void demo(void); // does not come back: the tool ends it by starting the code

#endif
