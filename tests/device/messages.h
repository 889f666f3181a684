// Messages for the tests, by short names: S1a is a store of page 1 (version a), S2a page 2,
// E1a page 1 of a module with another device ID, T1 and T2 texts, D1 to D3 displays of a
// page, X1 a message of another kind (General MIDI on).
#pragma once

#include <map>
#include <string>

#include "device/midi_port.h"

namespace lumidot::device::testing {

inline Bytes DataSet(std::uint8_t deviceId, Bytes body) {
    Bytes message{0xF0, 0x41, deviceId, 0x45, 0x12};
    int sum = 0;
    for (std::uint8_t b : body) {
        message.push_back(b);
        sum += b;
    }
    message.push_back(static_cast<std::uint8_t>((128 - sum % 128) % 128));
    message.push_back(0xF7);
    return message;
}

inline Bytes Store(std::uint8_t deviceId, std::uint8_t a2, std::uint8_t a3, std::uint8_t fill) {
    Bytes body{0x10, a2, a3};
    body.insert(body.end(), 64, fill);
    return DataSet(deviceId, body);
}

inline const std::map<std::string, Bytes>& Catalogue() {
    static const std::map<std::string, Bytes> messages{
        {"S1a", Store(0x10, 0x01, 0x00, 0x01)},
        {"S1b", Store(0x10, 0x01, 0x00, 0x02)},
        {"S1c", Store(0x10, 0x01, 0x00, 0x03)},
        {"S1d", Store(0x10, 0x01, 0x00, 0x04)},
        {"S2a", Store(0x10, 0x01, 0x40, 0x01)},
        {"E1a", Store(0x11, 0x01, 0x00, 0x01)},
        {"T1", DataSet(0x10, {0x10, 0x00, 0x00, 'H', 'i'})},
        {"T2", DataSet(0x10, {0x10, 0x00, 0x00, 'H', 'o'})},
        {"D1", DataSet(0x10, {0x10, 0x20, 0x00, 0x01})},
        {"D2", DataSet(0x10, {0x10, 0x20, 0x00, 0x02})},
        {"D3", DataSet(0x10, {0x10, 0x20, 0x00, 0x03})},
        {"X1", {0xF0, 0x7E, 0x7F, 0x09, 0x01, 0xF7}},
    };
    return messages;
}

inline const Bytes& Message(const std::string& name) {
    return Catalogue().at(name);
}

inline std::string NameOf(const Bytes& bytes) {
    for (const auto& [name, message] : Catalogue()) {
        if (message == bytes) return name;
    }
    return "?";
}

}  // namespace lumidot::device::testing
