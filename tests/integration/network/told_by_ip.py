# SPDX-License-Identifier: Apache-2.0
"""What QKNetworkInfo has to say of a machine without a network manager, put together from what ip says of it."""
import ipaddress
import uuid

BEYOND_LINK = ("global", "site")
LINK_LOCAL_4 = ipaddress.ip_network("169.254.0.0/16")
TYPES = {"bridge": (17, "Bridge"), "vlan": (14, "VLAN"), "bond": (3, "Bond")}
IPV4_METHODS = {"Manual": 1, "DHCP": 3, "LinkLocal": 7}
IPV6_METHODS = {"Automatic": 1, "LinkLocal": 2, "Manual": 3}


def service_id(name):
    try:
        with open("/etc/machine-id", encoding="ascii") as file:
            space = uuid.UUID(hex=file.readline().strip())
    except (OSError, ValueError):
        space = uuid.UUID(int=0)
    return str(uuid.uuid5(space, name)).upper()


class Told:
    def __init__(self, machine):
        self.machine = machine
        self.links = sorted(machine.ask("-d addr show"), key=lambda link: link["ifindex"])
        self.routes = {family: self.default_routes(option) for family, option in (("inet", "-4"), ("inet6", "-6"))}

    def __eq__(self, other):
        """Whether nothing of it has changed, timers aside."""
        return self.routes == other.routes and self.states() == other.states()

    def states(self):
        return [(link["ifname"], link["flags"], self.addresses(link, "inet"), self.addresses(link, "inet6"))
                for link in self.links]

    def default_routes(self, option):
        """(metric, interface, gateway or None, protocol) of each hop, best first."""
        hops = []
        for route in self.machine.ask(f"{option} route show table main default"):
            if "type" in route and route["type"] != "unicast":
                continue
            for hop in route.get("nexthops", [route]):
                gateway = hop.get("gateway") or hop.get("via", {}).get("host")
                hops.append((route.get("metric", 0), hop["dev"], gateway, route.get("protocol", "boot")))
        return sorted(hops, key=lambda hop: hop[0])

    @staticmethod
    def addresses(link, family):
        times = ("valid_life_time", "preferred_life_time")
        return [{key: value for key, value in each.items() if key not in times} for each in link["addr_info"]
                if each.get("family") == family and not each.get("tentative") and not each.get("dadfailed")]

    @staticmethod
    def kind(link):
        return link.get("linkinfo", {}).get("info_kind")

    def is_service(self, link):
        if "LOOPBACK" in link["flags"]:
            return False
        both = self.addresses(link, "inet") + self.addresses(link, "inet6")
        return self.kind(link) in TYPES or any(each["scope"] in BEYOND_LINK for each in both)

    def services(self):
        return [link for link in self.links if self.is_service(link)]

    def router(self, link, family):
        """The first gateway of the best route, "" without one; and the text for its network, "" while it is unknown."""
        hop = next((hop for hop in self.routes[family] if hop[1] == link["ifname"]), None)
        if hop is None or hop[2] is None:
            return "", ""
        entries = self.machine.ask(f"neigh show to {hop[2]} dev {link['ifname']}")
        hardware = next((entry["lladdr"] for entry in entries if "lladdr" in entry), None)
        prefix = "IPv4" if family == "inet" else "IPv6"
        return hop[2], f"{prefix}.Router={hop[2]};{prefix}.RouterHardwareAddress={hardware}" if hardware else ""

    def has_route_of(self, link, family, protocol):
        best = next((hop for hop in self.routes[family] if hop[1] == link["ifname"]), None)
        return best is not None and best[3] == protocol

    def ipv4(self, link):
        addresses = self.addresses(link, "inet")
        if not addresses:
            return None
        if any(each.get("dynamic") for each in addresses) or self.has_route_of(link, "inet", "dhcp"):
            method = "DHCP"
        elif all(ipaddress.ip_address(each["local"]) in LINK_LOCAL_4 for each in addresses):
            method = "LinkLocal"
        else:
            method = "Manual"
        router, signature = self.router(link, "inet")
        return {"configMethod": IPV4_METHODS[method], "configMethodString": method,
                "adresses": [each["local"] for each in addresses],
                "subnetMasks": [str(ipaddress.ip_network(f"0.0.0.0/{each['prefixlen']}").netmask)
                                for each in addresses],
                "broadcastAddresses": [each["broadcast"] for each in addresses if "broadcast" in each],
                "routerAddress": router, "networkSignature": signature}

    def ipv6(self, link):
        addresses = self.addresses(link, "inet6")
        if not addresses:
            return None
        beyond = [each for each in addresses if each["scope"] in BEYOND_LINK]
        is_marked = any(each.get("protocol") == "kernel_ra" for each in addresses)
        if is_marked or any(each.get("dynamic") for each in beyond) or self.has_route_of(link, "inet6", "ra"):
            method = "Automatic"
        else:
            method = "Manual" if beyond else "LinkLocal"
        router, signature = self.router(link, "inet6")
        return {"configMethod": IPV6_METHODS[method], "configMethodString": method,
                "adresses": [each["local"] for each in addresses],
                "prefixLengths": [each["prefixlen"] for each in addresses],
                "routerAddress": router, "networkSignature": signature}

    def hardware_address(self, link):
        address = link.get("address", "")
        return "" if link["link_type"] != "ether" or not address.strip("0:") else address

    def interface(self, link, dns):
        number, text = TYPES.get(self.kind(link), (0, ""))
        return {"type": number, "name": link["ifname"], "displayName": text or link["ifname"], "builtin": False,
                "linkActive": False, "linkSpeed": 0, "hardwareAddress": self.hardware_address(link),
                "hardwareModel": None, "ipv4Config": self.ipv4(link), "ipv6Config": self.ipv6(link), "dnsConfig": dns,
                "airPortConfig": None}

    def primary(self):
        """The interface of the best default route."""
        hops = self.routes["inet"] or self.routes["inet6"]
        return hops[0][1] if hops else None

    def interfaces(self, dns=None):
        """All of them; `dns` is what the one with the default route knows of name servers."""
        return [self.interface(link, dns if link["ifname"] == self.primary() else None)
                for link in self.services() if "UP" in link["flags"]]

    def service(self, link):
        text = TYPES.get(self.kind(link), (0, ""))[1]
        return {"enabled": "UP" in link["flags"], "name": link["ifname"], "serviceId": service_id(link["ifname"]),
                "interface": {"minimalTransferUnit": link["min_mtu"] if link["max_mtu"] else 0,
                              "maximalTransferUnit": link["max_mtu"], "name": link["ifname"], "type": text,
                              "hardwareAddress": self.hardware_address(link), "activeMediumType": None}}
