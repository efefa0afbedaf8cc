#include "recorder/RecorderProgram.h"

int main(int argument_count, char** arguments) { return recorder::RunRecorder(argument_count, arguments); }
