#include "server/ServerProgram.h"

int main(int argc, char** argv) { return ServerMain(argc, argv); }
