#pragma once

#include <cstdint>
#include <string>

// The framing of messages on a connection, shared by the server's client handler and by
// the client library. A frame is a 4-byte signed length in the sender's own byte order,
// then that many bytes of XML text without a terminating zero.

// Frames above this length are refused rather than allocated.
constexpr int32_t maxFrameLength = int32_t{1} << 30;

// What one attempt to read a frame found; the caller acts on it.
enum class FrameStatus {
    nothing,   // no complete length arrived: the poll timed out or failed
    closed,    // the peer closed the connection
    empty,     // a length of 0 or below: nothing read, nothing to parse, connection kept
    received,  // the whole text arrived
    broken,    // the text was cut short or too long: dropped, the caller closes the connection
};

// How a sender reports: the level-1 texts for a failed length and a failed text, and
// whether to log the progress of long texts.
struct SendReport {
    const char* firstFailed;
    const char* secondFailed;
    bool logProgress = false;
};

// Reads exactly `length` bytes. A peek first: if it finds nothing, the result is false at
// once and nothing is consumed. Otherwise reads until all has come, giving up after some
// 500 empty reads. `peerClosed`, if given, is set when the peer has closed the connection
// or the bytes stopped coming part way, after which the stream is out of step.
bool socketReceive(int socket, char* buffer, int length);
bool socketReceive(int socket, char* buffer, int length, bool* peerClosed);

// Logs the last socket error (errno) at level 1 in the three-line form with the Windows
// Sockets name, number and wording, or "error unknown" for an error without one.
void LogWinError();

// Sends the length of `text`, then the text. On failure logs the report's text and the
// error; the caller closes the connection.
bool SendFrame(int socket, const char* text, const SendReport& report);

// Reads one frame into `text`. With `logProgress`, long texts log each read.
FrameStatus ReceiveFrame(int socket, std::string& text, bool logProgress = false);
