/* Preloaded when the desktop is served without a screen: Qt's remote platform listens on every address and offers no
 * way to say otherwise, and a practice's records must not be open to the network. A socket bound to "any address" is
 * bound to this computer's loopback instead. */
#define _GNU_SOURCE
#include <dlfcn.h>
#include <netinet/in.h>
#include <string.h>
#include <sys/socket.h>

int bind(int fd, const struct sockaddr *address, socklen_t length)
{
    static int (*next)(int, const struct sockaddr *, socklen_t);
    if (!next)
        next = (int (*)(int, const struct sockaddr *, socklen_t))dlsym(RTLD_NEXT, "bind");

    if (address && address->sa_family == AF_INET && length >= sizeof(struct sockaddr_in)) {
        struct sockaddr_in local;
        memcpy(&local, address, sizeof local);
        if (local.sin_addr.s_addr == htonl(INADDR_ANY))
            local.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return next(fd, (struct sockaddr *)&local, sizeof local);
    }
    if (address && address->sa_family == AF_INET6 && length >= sizeof(struct sockaddr_in6)) {
        struct sockaddr_in6 local;
        memcpy(&local, address, sizeof local);
        if (memcmp(&local.sin6_addr, &in6addr_any, sizeof in6addr_any) == 0) {
            /* ::ffff:127.0.0.1, so that a viewer that asks for 127.0.0.1 finds it. */
            static const unsigned char loopback[16] = {0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xff, 0xff, 127, 0, 0, 1};
            memcpy(&local.sin6_addr, loopback, sizeof loopback);
        }
        return next(fd, (struct sockaddr *)&local, sizeof local);
    }
    return next(fd, address, length);
}
