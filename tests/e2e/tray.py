#!/usr/bin/python3
"""A tray on the session bus, and a person in front of it.

Usage: tray.py host         is a tray until it is ended
       tray.py item         prints the item that is in it as JSON, with its menu; null when there is none
       tray.py press LABEL  chooses this entry of the menu
       tray.py activate     clicks on the item
"""
import json
import sys

from gi.repository import Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"
WATCHER_PATH = "/StatusNotifierWatcher"
ITEM = "org.kde.StatusNotifierItem"
MENU = "com.canonical.dbusmenu"
INTERFACE = """
<node><interface name="org.kde.StatusNotifierWatcher">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
  <signal name="StatusNotifierItemRegistered"><arg type="s"/></signal>
  <signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


def host(bus):
    items = {}  # the name that each was registered under, by the connection that did

    def called(_bus, sender, _path, _interface, method, arguments, invocation):
        if method == "RegisterStatusNotifierItem":
            items[sender] = arguments[0]
            Gio.bus_watch_name_on_connection(bus, arguments[0], Gio.BusNameWatcherFlags.NONE, None,
                                             lambda *_: items.pop(sender, None))
        invocation.return_value(None)

    def value(_bus, _sender, _path, _interface, name):
        return {"RegisteredStatusNotifierItems": GLib.Variant("as", items.values()),
                "IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                "ProtocolVersion": GLib.Variant("i", 0)}[name]

    interface = Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0]
    bus.register_object(WATCHER_PATH, interface, called, value, None)
    Gio.bus_own_name_on_connection(bus, WATCHER, Gio.BusNameOwnerFlags.NONE, None, None)
    GLib.MainLoop().run()


def call(bus, name, path, interface, method, arguments=None):
    return bus.call_sync(name, path, interface, method, arguments, None, Gio.DBusCallFlags.NONE, 5000, None).unpack()


def properties(bus, name, path, interface):
    return call(bus, name, path, "org.freedesktop.DBus.Properties", "GetAll", GLib.Variant("(s)", (interface,)))[0]


def menu_of(bus, name, item):
    _, (_, _, entries) = call(bus, name, item["Menu"], MENU, "GetLayout", GLib.Variant("(iias)", (0, -1, [])))
    return [(number, values) for number, values, _ in entries if values.get("visible", True)]


def shown(label):
    """Without the underscores of keys, as a desktop shows it."""
    return "_".join(part.replace("_", "") for part in label.split("__"))


def main():
    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    if sys.argv[1] == "host":
        return host(bus)
    names = properties(bus, WATCHER, WATCHER_PATH, WATCHER)["RegisteredStatusNotifierItems"]
    if not names:
        print("null")
        return 1
    item = properties(bus, names[0], "/StatusNotifierItem", ITEM)
    if sys.argv[1] == "activate":
        call(bus, names[0], "/StatusNotifierItem", ITEM, "Activate", GLib.Variant("(ii)", (0, 0)))
        return 0
    menu = menu_of(bus, names[0], item)
    if sys.argv[1] == "press":
        for number, values in menu:
            if shown(values.get("label", "")) == sys.argv[2] and values.get("enabled", True):
                call(bus, names[0], item["Menu"], MENU, "Event",
                     GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("s", ""), 0)))
                return 0
        return 1
    entries = [{"label": shown(values.get("label", "")), "isEnabled": values.get("enabled", True)}
               for _, values in menu if values.get("type") != "separator"]
    print(json.dumps({"title": item["Title"], "id": item["Id"], "status": item["Status"],
                      "iconSizes": sorted(pixmap[0] for pixmap in item["IconPixmap"]), "menu": entries,
                      "separators": [place for place, (_, values) in enumerate(menu)
                                     if values.get("type") == "separator"]}))
    return 0


if __name__ == "__main__":
    sys.exit(main())
