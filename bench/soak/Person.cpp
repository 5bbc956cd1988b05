#include "Person.h"

#include <csignal>

namespace brindlecam::soak {

void Person::signalProgram(int number)
{
    ::kill(static_cast<pid_t>(program().pid()), number);
}

} // namespace brindlecam::soak
