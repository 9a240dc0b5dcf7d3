/* The end of a test program in C: its cases by their names, which the build has written down, and main. One
 * case by its name, or all of them.
 */
typedef struct named_case {
  const char* name;
  void (*run)(void);
} named_case;

static const named_case cases[] = {
#include "cases.inc"
};

int main(int count, char** arguments) {
  size_t i;
  int run = 0;
  for (i = 0; i < sizeof cases / sizeof *cases; ++i)
    if (count < 2 || strcmp(arguments[1], cases[i].name) == 0) {
      cases[i].run();
      printf("%s\n", cases[i].name);
      ++run;
    }
  return run > 0 ? 0 : 2;
}
