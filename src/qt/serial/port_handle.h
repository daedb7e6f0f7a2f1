#pragma once

// What QSerialPort does not tell of an open port, asked of the system by its handle. Where the
// system has no such question (Windows) the answers say that QSerialPort's own are good enough.

#include <QSerialPort>
#include <string>
#include <utility>

#include "base/bytes.h"
#include "qt/serial/line_settings.h"

namespace memwright::port_handle {

using Handle = decltype(std::declval<const QSerialPort&>().handle());

// A pseudo-terminal has neither parity nor modem lines.
bool is_pseudo_terminal(Handle handle);

// The other end is gone.
bool is_hung_up(Handle handle);

// False after a hang-up, and at an end of input that is not marked as one.
bool is_alive(Handle handle);

// Bytes that the system has received and QSerialPort has not fetched yet.
int waiting(Handle handle);

// Appends up to `at_most` of them.
void take(Handle handle, int at_most, Bytes& bytes);

void discard_input(Handle handle);
void discard_output(Handle handle);

// Sends what the line takes now; the rest follows from the event loop.
void send(QSerialPort& port);

// Gives the line a millisecond or so to take more.
void wait_to_send(QSerialPort& port);

// Bytes written that the device has not taken yet.
int unsent(Handle handle);

// Whether the device has sent all that it took; true of one that does not tell.
bool transmitter_is_empty(Handle handle);

// Bytes arrive as they were received, whatever their parity, and the event loop is woken once
// `threshold` of them wait; 0 leaves it asleep as long as possible. False if it cannot be set.
bool set_reception(Handle handle, int threshold);

// "" if the device took the settings; otherwise which it did not.
std::string refused_setting(Handle handle, const LineSettings& wanted);

}  // namespace memwright::port_handle
