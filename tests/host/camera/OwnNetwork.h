#pragma once

#include <cstring>

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

/// Puts this program, and those that it starts, into a network of their own that has the loopback interface
/// and nothing else: what they send reaches nobody. Called first of all, while there is one thread. False
/// when the rights for it are missing.
inline bool enterOwnNetwork()
{
    if (unshare(CLONE_NEWNET) != 0)
        return false;
    const int any = socket(AF_INET, SOCK_DGRAM, 0);
    ifreq request{};
    std::strncpy(request.ifr_name, "lo", sizeof request.ifr_name - 1);
    bool isUp = ioctl(any, SIOCGIFFLAGS, &request) == 0;
    request.ifr_flags = static_cast<short>(request.ifr_flags | IFF_UP);
    isUp = isUp && ioctl(any, SIOCSIFFLAGS, &request) == 0;
    close(any);
    return isUp;
}
