#pragma once

#include <memory>
#include <utility>

namespace brindlecam::test {

/// Puts a fake in a port's place and hands it on for the test to steer.
template <typename Port, typename Base>
Port& install(std::unique_ptr<Base>& place)
{
    auto port = std::make_unique<Port>();
    Port& reference = *port;
    place = std::move(port);
    return reference;
}

} // namespace brindlecam::test
