#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""A stand-in for GeoClue on the system bus: one client, positions by line.

    geoclue_standin.py [deny]

Each line "LATITUDE LONGITUDE" of the standard input becomes the position, of which a client that has started is told.
With "deny" no client may start. What clients set and ask is printed, one line for each.
"""
import sys

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

SERVICE = "org.freedesktop.GeoClue2"
MANAGER, CLIENT, LOCATION = (f"{SERVICE}.{name}" for name in ("Manager", "Client", "Location"))
NOWHERE = dbus.ObjectPath("/")


def say(*words):
    print(*words, flush=True)


class Properties(dbus.service.Object):
    """An object with properties of one interface."""

    def __init__(self, bus, path, interface, values):
        super().__init__(bus, path)
        self.interface, self.values = interface, values

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ss", out_signature="v")
    def Get(self, _interface, name):
        return self.values[name]

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return self.values

    @dbus.service.method(dbus.PROPERTIES_IFACE, in_signature="ssv")
    def Set(self, _interface, name, value):
        say(name, value)
        self.values[name] = value


class Manager(dbus.service.Object):
    @dbus.service.method(MANAGER, out_signature="o")
    def GetClient(self):
        return dbus.ObjectPath("/org/freedesktop/GeoClue2/Client/1")


class Client(Properties):
    def __init__(self, bus, denies):
        super().__init__(bus, "/org/freedesktop/GeoClue2/Client/1", CLIENT, {
            "Location": NOWHERE, "DistanceThreshold": dbus.UInt32(0), "TimeThreshold": dbus.UInt32(0),
            "DesktopId": "", "RequestedAccuracyLevel": dbus.UInt32(0), "Active": False})
        self.bus, self.denies, self.places = bus, denies, []

    @dbus.service.method(CLIENT)
    def Start(self):
        say("Start")
        if self.denies:
            raise dbus.DBusException("denied", name="org.freedesktop.DBus.Error.AccessDenied")
        self.values["Active"] = True
        self.tell()

    @dbus.service.method(CLIENT)
    def Stop(self):
        say("Stop")
        self.values["Active"] = False

    @dbus.service.signal(CLIENT, signature="oo")
    def LocationUpdated(self, old, new):
        pass

    def move(self, latitude, longitude):
        path = f"/org/freedesktop/GeoClue2/Location/{len(self.places)}"
        self.places.append(Properties(self.bus, path, LOCATION, {
            "Latitude": latitude, "Longitude": longitude, "Accuracy": 1000.0, "Altitude": -1.79e308, "Speed": -1.0,
            "Heading": -1.0, "Description": "",
            "Timestamp": dbus.Struct((dbus.UInt64(1700000000 + len(self.places)), dbus.UInt64(0)), signature="tt")}))
        old, self.values["Location"] = self.values["Location"], dbus.ObjectPath(path)
        if self.values["Active"]:
            self.LocationUpdated(old, self.values["Location"])

    def tell(self):
        if self.values["Location"] != NOWHERE:
            self.LocationUpdated(NOWHERE, self.values["Location"])


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SystemBus()
    manager, client = Manager(bus, "/org/freedesktop/GeoClue2/Manager"), Client(bus, "deny" in sys.argv[1:])
    name = dbus.service.BusName(SERVICE, bus)
    loop = GLib.MainLoop()
    positions = open(0, "rb", buffering=0)  # or a line read ahead would wait unseen

    def moved(_source, _condition):
        line = positions.readline()
        if not line:
            loop.quit()
            return False
        client.move(*map(float, line.split()))
        return True

    GLib.io_add_watch(positions, GLib.PRIORITY_DEFAULT, GLib.IO_IN | GLib.IO_HUP, moved)
    loop.run()
    del manager, name


main()
