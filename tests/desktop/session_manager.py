"""A session manager for tests: prints the address that SESSION_MANAGER is to name; for a line of
input asks the program that has come to save itself for the end of the session, and says "answered"
when it has done so or has gone."""

import atexit
import ctypes
import select
import sys

ICE = ctypes.CDLL('libICE.so.6')
SM = ctypes.CDLL('libSM.so.6')
POINTER = ctypes.c_void_p
SAVE_ALL, NO_TALK, TRUE = 2, 0, 1
EVERY_REQUEST = 0x3FF


def answering(kind, *arguments):
    """A callback's type; the connection and the manager's own pointer come first."""
    return ctypes.CFUNCTYPE(kind, POINTER, POINTER, *arguments)


def registered(connection, _, former):
    SM.SmsRegisterClientReply(POINTER(connection), b'1234')
    clients.append(connection)  # only the last one counts
    return TRUE


def nothing(*_):
    pass


def answered(*_):
    if asked:
        asked.clear()
        print('answered', flush=True)


NUMBER = ctypes.c_int
# In the order of the library's own record of them.
CALLBACKS = [answering(NUMBER, POINTER)(registered),
             answering(None, NUMBER)(nothing),  # wishes to talk
             answering(None, NUMBER)(nothing),  # has talked
             answering(None, NUMBER, NUMBER, NUMBER, NUMBER, NUMBER)(nothing),  # wishes to save
             answering(None)(nothing),  # wishes to save after all others
             answering(None, NUMBER)(answered),
             answering(None, NUMBER, POINTER)(nothing),  # goes
             answering(None, NUMBER, POINTER)(nothing),  # its properties
             answering(None, NUMBER, POINTER)(nothing),
             answering(None)(nothing)]
clients, asked = [], []


@ctypes.CFUNCTYPE(NUMBER, POINTER, POINTER, POINTER, POINTER, POINTER)
def new_client(_, __, mask, callbacks, ___):
    ctypes.cast(mask, ctypes.POINTER(ctypes.c_ulong))[0] = EVERY_REQUEST
    record = ctypes.cast(callbacks, ctypes.POINTER(POINTER))
    for number, callback in enumerate(CALLBACKS):
        record[2 * number] = ctypes.cast(callback, POINTER).value
    return TRUE


@ctypes.CFUNCTYPE(NUMBER, ctypes.c_char_p)
def everybody_may_come(_):
    return TRUE


@ctypes.CFUNCTYPE(None, POINTER)
def broken(_):
    """Else the library would end this process."""


def listen():
    fault = ctypes.create_string_buffer(256)
    SM.SmsInitialize(b'test', b'1', new_client, None, everybody_may_come, 256, fault)
    ICE.IceSetIOErrorHandler(broken)
    count, sockets = NUMBER(), ctypes.POINTER(POINTER)()
    if not ICE.IceListenForConnections(ctypes.byref(count), ctypes.byref(sockets), 256, fault):
        sys.exit(fault.value.decode())
    atexit.register(ICE.IceFreeListenObjs, count, sockets)  # removes their files
    sockets = [POINTER(sockets[number]) for number in range(count.value)]
    for socket in sockets:
        ICE.IceSetHostBasedAuthProc(socket, everybody_may_come)
    ICE.IceGetListenConnectionString.restype = ctypes.c_char_p
    names = [ICE.IceGetListenConnectionString(socket).decode() for socket in sockets]
    # Where no host is looked up.
    print(next(name for name in names if name.startswith('unix/')), flush=True)
    return {ICE.IceGetListenConnectionNumber(socket): socket for socket in sockets}


def ask_to_save():
    asked.append(clients[-1])
    SM.SmsSaveYourself(POINTER(clients[-1]), SAVE_ALL, TRUE, NO_TALK, TRUE)


def main():
    sockets = listen()
    connections = {}
    ICE.IceAcceptConnection.restype = POINTER
    while True:
        ready, _, _ = select.select([0, *sockets, *connections], [], [])
        for number in ready:
            if number == 0:
                if not sys.stdin.buffer.raw.readline():
                    return
                ask_to_save()
            elif number in sockets:
                status = NUMBER()
                accepted = ICE.IceAcceptConnection(sockets[number], ctypes.byref(status))
                connection = POINTER(accepted)
                connections[ICE.IceConnectionNumber(connection)] = connection
            elif ICE.IceProcessMessages(connections[number], None, None) != 0:
                del connections[number]
                answered()


if __name__ == '__main__':
    main()
