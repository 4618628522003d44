#include "frontend/options.h"

int main(int argc, char** argv) { return orvex::frontend::parse_command_line(argc, argv).status; }
