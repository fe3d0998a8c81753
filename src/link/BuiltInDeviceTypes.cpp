// The catalogue of Vekules that a new store is seeded with.
#include "link/DeviceTypes.h"

#include <array>

namespace vek {

std::span<const DeviceType> BuiltInDeviceTypes() {
    static const std::array<DeviceType, 31> catalogue = {{
        {1, 11, "Wall Panel 2 Vek", "Wall Panel 2 Boot"},
        {2, 12, "Wall Panel 4 Vek", "Wall Panel 4 Boot"},
        {3, 13, "Wall Panel 8 Vek", "Wall Panel 8 Boot"},
        {4, 14, "Key Switch Vek", "Key Switch Boot"},
        {5, 15, "Rotary Level Vek", "Rotary Level Boot"},
        {6, 16, "Slider Panel Vek", "Slider Panel Boot"},
        {7, 17, "Text Display Vek", "Text Display Boot"},
        {8, 18, "Touch Panel Vek", "Touch Panel Boot"},
        {9, 19, "Relay 4 Vek", "Relay 4 Boot"},
        {10, 20, "Relay 8 Vek", "Relay 8 Boot"},
        {11, 21, "Power Relay Vek", "Power Relay Boot"},
        {12, 22, "Opto Input 8 Vek", "Opto Input 8 Boot"},
        {13, 23, "Contact Input 16 Vek", "Contact Input 16 Boot"},
        {14, 24, "Analog Input Vek", "Analog Input Boot"},
        {15, 25, "Analog Output Vek", "Analog Output Boot"},
        {16, 26, "Dimmer 4 Vek", "Dimmer 4 Boot"},
        {17, 27, "Dimmer 12 Vek", "Dimmer 12 Boot"},
        {18, 28, "Lighting Gateway Vek", "Lighting Gateway Boot"},
        {19, 29, "Motor Control Vek", "Motor Control Boot"},
        {20, 30, "Curtain Vek", "Curtain Boot"},
        {21, 31, "Infrared Receiver Vek", "Infrared Receiver Boot"},
        {22, 32, "Infrared Sender Vek", "Infrared Sender Boot"},
        {23, 33, "Motion Sensor Vek", "Motion Sensor Boot"},
        {24, 34, "Clock Vek", "Clock Boot"},
        {25, 35, "Logic Vek", "Logic Boot"},
        {26, 36, "Serial Gateway Vek", "Serial Gateway Boot"},
        {27, 37, "Network Gateway Vek", "Network Gateway Boot"},
        {28, 38, "Bus Repeater Vek", "Bus Repeater Boot"},
        {29, matrixVekReply, "Matrix Vek", "Matrix Boot"},
        {30, 40, "Zone Mixer Vek", "Zone Mixer Boot"},
        {31, 41, "Paging Station Vek", "Paging Station Boot"},
    }};
    return catalogue;
}

} // namespace vek
