#include "Programs/CommandLine/Console.h"
#include "Programs/CommandLine/ExitStatus.h"
#include "Programs/CommandLine/HeadlessProgram.h"
#include "Programs/CommandLine/SignalEvents.h"

#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <vector>

int main(int argc, char** argv) {
    try {
        SignalEvents events;
        const Console console = Console::System();
        HeadlessProgram program(console, events);
        const int status = program.Run(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
        if (program.HasAbandonedWorker()) {
            std::_Exit(status);
        }
        return status;
    } catch (const std::exception& failure) {
        std::cerr << "gaugeline-cli: " << failure.what() << std::endl;
        std::_Exit(kExitCouldNotStart);  // a worker may still be using what a return would destroy
    }
}
