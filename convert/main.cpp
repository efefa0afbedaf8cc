#include "convert/ConvertProgram.h"

int main(int argument_count, char** arguments) { return convert::RunConvert(argument_count, arguments); }
