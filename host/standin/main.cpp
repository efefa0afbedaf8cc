#include "host/standin/StandInProgram.h"

int main(int argument_count, char** arguments) { return host::RunStandIn(argument_count, arguments); }
