#include "app/program.h"

int main(int argc, char** argv) {
  return rk::app::run_program(argc, argv, RKCLIENT_VERSION);
}
