#include "qt/serial/port_diagnosis.h"

namespace memwright {

namespace {

using Cause = PortFacts::Cause;

std::string words(const SerialDevice& device) {
    return device.description.empty() ? device.path : device.path + " (" + device.description + ")";
}

std::string choose_another(int number) {
    return "choose another device for COM " + std::to_string(number);
}

std::string missing(int number, const std::vector<SerialDevice>& present) {
    const std::string head = "there is no such device.\n";
    if (present.empty()) {
        return head +
               "No serial device is present at all. Plug the cable's adapter in and try "
               "again.";
    }
    std::string list;
    for (const auto& device : present) list += (list.empty() ? "" : ", ") + words(device);
    return head + "Present: " + list + ".\nPlug the cable's adapter in, or " +
           choose_another(number) + ".";
}

std::string closed_to_user(const std::string& path, const PortFacts& facts) {
    const std::string head = "permission denied.\n";
    if (!facts.group_may_use) {
        return head + "Only the device's owner, " + facts.owner +
               ", may use it. Run  sudo chmod "
               "a+rw " +
               path + "  and try again.";
    }
    const std::string belongs = head + "The device belongs to the group " + facts.group + ", and ";
    if (facts.session_in_group) {
        return belongs +
               "you are in it, but the system forbids its use all the same. Ask the "
               "administrator which rule does (an access list, a sandbox, a container).";
    }
    if (facts.user_in_group) {
        return belongs +
               "you are in it, but not yet since you logged in. Log out and log in "
               "again.";
    }
    return belongs + "you are not in it. Run  sudo usermod -aG " + facts.group + " " + facts.user +
           "  and log in again.";
}

std::string words(const PortFacts::Holder& holder) {
    if (holder.self) return "this program itself";
    const std::string process = "process " + std::to_string(holder.process);
    return holder.program.empty() ? process : holder.program + " (" + process + ")";
}

std::string busy(const std::string& path, const PortFacts& facts) {
    const std::string head = "it is in use.\n";
    if (!facts.holders.empty()) {
        std::string list;
        for (const auto& holder : facts.holders) {
            list += (list.empty() ? "" : " and ") + words(holder);
        }
        return head + "It is held by " + list + ". Close it there and try again.";
    }
    if (!facts.stale_lock.empty()) {
        return head + "A program that no longer runs has left its lock. Run  sudo rm " +
               facts.stale_lock + "  and try again.";
    }
    return head +
           "Another program has it open; the system does not tell which. Run  sudo fuser "
           "-v " +
           path + "  to see it, close it there and try again.";
}

std::string other(const PortFacts& facts) {
    const std::string why =
        facts.system_text.empty() ? "the system tells no reason" : facts.system_text;
    return why + ".\nPull the adapter out, plug it in again and try once more.";
}

std::string reason(int number, const std::string& path, const PortFacts& facts,
                   const std::vector<SerialDevice>& present) {
    switch (facts.cause) {
        case Cause::missing:
            return missing(number, present);
        case Cause::folder_closed:
            return "permission denied.\nThe folder that it lies in may not be entered. Use the "
                   "device's name in /dev, or " +
                   choose_another(number) + ".";
        case Cause::permission:
            return closed_to_user(path, facts);
        case Cause::busy:
            return busy(path, facts);
        case Cause::not_serial:
            return "it is " + facts.kind + ", not a serial device.\nPlease " +
                   choose_another(number) + ".";
        case Cause::other:
            break;
    }
    return other(facts);
}

}  // namespace

std::string port_name(int number, const std::string& path) {
    return "COM " + std::to_string(number) + " (" + path + ")";
}

std::string port_diagnosis(int number, const std::string& path, const PortFacts& facts,
                           const std::vector<SerialDevice>& present) {
    return "Cannot open " + port_name(number, path) + ": " + reason(number, path, facts, present);
}

}  // namespace memwright
