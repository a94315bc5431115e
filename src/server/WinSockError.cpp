#include "server/WinSockError.h"

#include <cerrno>
#include <iterator>

namespace {

// Microsoft's list of the Windows Sockets errors that a Linux socket call can report.
// WSAETIMEDOUT (10060) is deliberately absent: a receive time-out logs "error unknown".
const WinSockError winSockErrors[] = {
    {8, "WSA_NOT_ENOUGH_MEMORY", "Insufficient memory available.",
     "An application used a Windows Sockets function that directly maps to a Windows "
     "function. The Windows function is indicating a lack of required memory resources."},
    {995, "WSA_OPERATION_ABORTED", "Overlapped operation aborted.",
     "An overlapped operation was canceled due to the closure of the socket, or the execution "
     "of the SIO_FLUSH command in WSAIoctl."},
    {10004, "WSAEINTR", "Interrupted function call.",
     "A blocking operation was interrupted by a call to WSACancelBlockingCall."},
    {10009, "WSAEBADF", "File handle is not valid.", "The file handle supplied is not valid."},
    {10013, "WSAEACCES", "Permission denied.",
     "An attempt was made to access a socket in a way forbidden by its access permissions. An "
     "example is using a broadcast address for sendto without broadcast permission being set "
     "using setsockopt(SO_BROADCAST)."},
    {10014, "WSAEFAULT", "Bad address.",
     "The system detected an invalid pointer address in attempting to use a pointer argument "
     "of a call. This error occurs if an application passes an invalid pointer value, or if "
     "the length of the buffer is too small."},
    {10022, "WSAEINVAL", "Invalid argument.",
     "Some invalid argument was supplied (for example, specifying an invalid level to the "
     "setsockopt function). In some instances, it also refers to the current state of the "
     "socket-for instance, calling accept on a socket that is not listening."},
    {10024, "WSAEMFILE", "Too many open files.",
     "Too many open sockets. Each implementation may have a maximum number of socket handles "
     "available, either globally, per process, or per thread."},
    {10036, "WSAEINPROGRESS", "Operation now in progress.",
     "A blocking operation is currently executing. Windows Sockets only allows a single "
     "blocking operation-per- task or thread-to be outstanding, and if any other function "
     "call is made (whether or not it references that or any other socket) the function fails "
     "with the WSAEINPROGRESS error."},
    {10037, "WSAEALREADY", "Operation already in progress.",
     "An operation was attempted on a nonblocking socket with an operation already in "
     "progress-that is, calling connect a second time on a nonblocking socket that is already "
     "connecting, or canceling an asynchronous request (WSAAsyncGetXbyY) that has already "
     "been canceled or completed."},
    {10038, "WSAENOTSOCK", "Socket operation on nonsocket.",
     "An operation was attempted on something that is not a socket. Either the socket handle "
     "parameter did not reference a valid socket, or for select, a member of an fd_set was "
     "not valid."},
    {10039, "WSAEDESTADDRREQ", "Destination address required.",
     "A required address was omitted from an operation on a socket. For example, this error "
     "is returned if sendto is called with the remote address of ADDR_ANY."},
    {10040, "WSAEMSGSIZE", "Message too long.",
     "A message sent on a datagram socket was larger than the internal message buffer or some "
     "other network limit, or the buffer used to receive a datagram was smaller than the "
     "datagram itself."},
    {10041, "WSAEPROTOTYPE", "Protocol wrong type for socket.",
     "A protocol was specified in the socket function call that does not support the "
     "semantics of the socket type requested. For example, the ARPA Internet UDP protocol "
     "cannot be specified with a socket type of SOCK_STREAM."},
    {10042, "WSAENOPROTOOPT", "Bad protocol option.",
     "An unknown, invalid or unsupported option or level was specified in a getsockopt or "
     "setsockopt call."},
    {10043, "WSAEPROTONOSUPPORT", "Protocol not supported.",
     "The requested protocol has not been configured into the system, or no implementation "
     "for it exists. For example, a socket call requests a SOCK_DGRAM socket, but specifies a "
     "stream protocol."},
    {10044, "WSAESOCKTNOSUPPORT", "Socket type not supported.",
     "The support for the specified socket type does not exist in this address family. For "
     "example, the optional type SOCK_RAW might be selected in a socket call, and the "
     "implementation does not support SOCK_RAW sockets at all."},
    {10045, "WSAEOPNOTSUPP", "Operation not supported.",
     "The attempted operation is not supported for the type of object referenced. Usually "
     "this occurs when a socket descriptor to a socket that cannot support this operation is "
     "trying to accept a connection on a datagram socket."},
    {10046, "WSAEPFNOSUPPORT", "Protocol family not supported.",
     "The protocol family has not been configured into the system or no implementation for "
     "it exists. This message has a slightly different meaning from WSAEAFNOSUPPORT. However, "
     "it is interchangeable in most cases, and all Windows Sockets functions that return one "
     "of these messages also specify WSAEAFNOSUPPORT."},
    {10047, "WSAEAFNOSUPPORT", "Address family not supported by protocol family.",
     "An address incompatible with the requested protocol was used. All sockets are created "
     "with an associated address family (that is, AF_INET for Internet Protocols) and a "
     "generic protocol type (that is, SOCK_STREAM). This error is returned if an incorrect "
     "protocol is explicitly requested in the socket call, or if an address of the wrong "
     "family is used for a socket, for example, in sendto."},
    {10048, "WSAEADDRINUSE", "Address already in use.",
     "Typically, only one usage of each socket address (protocol/IP address/port) is "
     "permitted. This error occurs if an application attempts to bind a socket to an IP "
     "address/port that has already been used for an existing socket, or a socket that was "
     "not closed properly, or one that is still in the process of closing."},
    {10049, "WSAEADDRNOTAVAIL", "Cannot assign requested address.",
     "The requested address is not valid in its context. This normally results from an "
     "attempt to bind to an address that is not valid for the local computer. This can also "
     "result from connect, sendto, WSAConnect, WSAJoinLeaf, or WSASendTo when the remote "
     "address or port is not valid for a remote computer (for example, address or port 0)."},
    {10050, "WSAENETDOWN", "Network is down.",
     "A socket operation encountered a dead network. This could indicate a serious failure of "
     "the network system (that is, the protocol stack that the Windows Sockets DLL runs over), "
     "the network interface, or the local network itself."},
    {10051, "WSAENETUNREACH", "Network is unreachable.",
     "A socket operation was attempted to an unreachable network. This usually means the "
     "local software knows no route to reach the remote host."},
    {10052, "WSAENETRESET", "Network dropped connection on reset.",
     "The connection has been broken due to keep-alive activity detecting a failure while the "
     "operation was in progress. It can also be returned by setsockopt if an attempt is made "
     "to set SO_KEEPALIVE on a connection that has already failed."},
    {10053, "WSAECONNABORTED", "Software caused connection abort.",
     "An established connection was aborted by the software in your host computer, possibly "
     "due to a data transmission time-out or protocol error."},
    {10054, "WSAECONNRESET", "Connection reset by peer.",
     "An existing connection was forcibly closed by the remote host. This normally results if "
     "the peer application on the remote host is suddenly stopped, the host is rebooted, the "
     "host or remote network interface is disabled, or the remote host uses a hard close (see "
     "setsockopt for more information on the SO_LINGER option on the remote socket)."},
    {10055, "WSAENOBUFS", "No buffer space available.",
     "An operation on a socket could not be performed because the system lacked sufficient "
     "buffer space or because a queue was full."},
    {10056, "WSAEISCONN", "Socket is already connected.",
     "A connect request was made on an already-connected socket."},
    {10057, "WSAENOTCONN", "Socket is not connected.",
     "A request to send or receive data was disallowed because the socket is not connected "
     "and (when sending on a datagram socket using sendto) no address was supplied."},
    {10058, "WSAESHUTDOWN", "Cannot send after socket shutdown.",
     "A request to send or receive data was disallowed because the socket had already been "
     "shut down in that direction with a previous shutdown call. By calling shutdown a partial "
     "close of a socket is requested, which is a signal that sending or receiving, or both "
     "have been discontinued."},
    {10059, "WSAETOOMANYREFS", "Too many references.",
     "Too many references to some kernel object."},
    {10061, "WSAECONNREFUSED", "Connection refused.",
     "No connection could be made because the target computer actively refused it. This "
     "usually results from trying to connect to a service that is inactive on the foreign "
     "host-that is, one with no server application running."},
    {10062, "WSAELOOP", "Cannot translate name.", "Cannot translate a name."},
    {10063, "WSAENAMETOOLONG", "Name too long.", "A name component or a name was too long."},
    {10064, "WSAEHOSTDOWN", "Host is down.",
     "A socket operation failed because the destination host is down. A socket operation "
     "encountered a dead host. Networking activity on the local host has not been initiated. "
     "These conditions are more likely to be indicated by the error WSAETIMEDOUT."},
    {10065, "WSAEHOSTUNREACH", "No route to host.",
     "A socket operation was attempted to an unreachable host. See WSAENETUNREACH."},
    {10066, "WSAENOTEMPTY", "Directory not empty.", "Cannot remove a directory that is not empty."},
    {10068, "WSAEUSERS", "User quota exceeded.", "Ran out of user quota."},
    {10069, "WSAEDQUOT", "Disk quota exceeded.", "Ran out of disk quota."},
    {10070, "WSAESTALE", "Stale file handle reference.",
     "The file handle reference is no longer available."},
    {10071, "WSAEREMOTE", "Item is remote.", "The item is not available locally."},
};

// Which Windows Sockets error each Linux errno stands for.
struct ErrnoCounterpart {
    int errnoValue;
    int code;
};

const ErrnoCounterpart counterparts[] = {
    {ENOMEM, 8},
    {ECANCELED, 995},
    {EINTR, 10004},
    {EBADF, 10009},
    {EACCES, 10013},
    {EPERM, 10013},
    {EFAULT, 10014},
    {EINVAL, 10022},
    {EMFILE, 10024},
    {ENFILE, 10024},
    {EINPROGRESS, 10036},
    {EALREADY, 10037},
    {ENOTSOCK, 10038},
    {EDESTADDRREQ, 10039},
    {EMSGSIZE, 10040},
    {EPROTOTYPE, 10041},
    {ENOPROTOOPT, 10042},
    {EPROTONOSUPPORT, 10043},
    {ESOCKTNOSUPPORT, 10044},
    {EOPNOTSUPP, 10045},
    {EPFNOSUPPORT, 10046},
    {EAFNOSUPPORT, 10047},
    {EADDRINUSE, 10048},
    {EADDRNOTAVAIL, 10049},
    {ENETDOWN, 10050},
    {ENETUNREACH, 10051},
    {ENETRESET, 10052},
    {ECONNABORTED, 10053},
    {ECONNRESET, 10054},
    {ENOBUFS, 10055},
    {EISCONN, 10056},
    {ENOTCONN, 10057},
    {ESHUTDOWN, 10058},
    {EPIPE, 10058},
    {ETOOMANYREFS, 10059},
    {ECONNREFUSED, 10061},
    {ELOOP, 10062},
    {ENAMETOOLONG, 10063},
    {EHOSTDOWN, 10064},
    {EHOSTUNREACH, 10065},
    {ENOTEMPTY, 10066},
    {EUSERS, 10068},
    {EDQUOT, 10069},
    {ESTALE, 10070},
    {EREMOTE, 10071},
};

const WinSockError* FindByCode(int code) {
    for (const WinSockError& error : winSockErrors) {
        if (error.code == code) return &error;
    }
    return nullptr;
}

}  // namespace

const WinSockError* FindWinSockError(int errnoValue) {
    for (const ErrnoCounterpart& counterpart : counterparts) {
        if (counterpart.errnoValue == errnoValue) return FindByCode(counterpart.code);
    }
    return nullptr;
}
