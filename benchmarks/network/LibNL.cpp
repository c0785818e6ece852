// SPDX-License-Identifier: Apache-2.0
#include "benchmarks/network/Register.h"

#include <netlink/cache.h>
#include <netlink/route/addr.h>
#include <netlink/route/link.h>
#include <netlink/route/route.h>
#include <netlink/socket.h>

namespace qk::bench {
namespace {

void readCaches(std::size_t /*interfaces*/) {
    nl_sock* const socket = nl_socket_alloc();
    nl_connect(socket, NETLINK_ROUTE);
    nl_cache* links = nullptr;
    nl_cache* addresses = nullptr;
    nl_cache* routes = nullptr;
    rtnl_link_alloc_cache(socket, AF_UNSPEC, &links);
    rtnl_addr_alloc_cache(socket, &addresses);
    rtnl_route_alloc_cache(socket, AF_UNSPEC, 0, &routes);
    for (nl_cache* const cache : {routes, addresses, links}) {
        nl_cache_free(cache);
    }
    nl_socket_free(socket);
}

const bool kLibNL = compete("libnl-route", readCaches);

} // namespace
} // namespace qk::bench
