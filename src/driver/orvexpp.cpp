// The program: translates the input that the run control file, its one argument, names.
#include "driver/run.h"

int main(int argc, char** argv) { return orvex::run(argc > 1 ? argv[1] : ""); }
