// The program without windows, for a machine that has none.

#include "launch.h"

int main(int argc, char** argv) { return orvalis::Launch(argc, argv, nullptr); }
