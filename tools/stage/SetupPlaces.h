#pragma once

// Where the controls of the setup window are: their centres, in the window's content.
namespace kestrel::stage::SetupPlaces {

inline constexpr const char* Title = "User Assignable Setup";
inline constexpr const char* LoadTitle = "Open Kestrel Console File";
inline constexpr const char* SaveTitle = "Save Kestrel Console File";

struct Place {
    int x;
    int y;
};

inline constexpr Place Load { 31, 19 };
inline constexpr Place Save { 89, 19 };
inline constexpr Place Assign { 568, 319 };
inline constexpr Place OK { 568, 423 };
inline constexpr Place Cancel { 488, 423 };

// Buttons are numbered from 1 to 12, fields from 1 to 4.
constexpr Place button(int number)
{
    return { 75 + 98 * ((number - 1) % 4), 142 + 98 * ((number - 1) / 4) };
}
constexpr Place field(int number)
{
    return { 480, 121 + 49 * (number - 1) };
}
constexpr Place clearButton(int number)
{
    return { 572, field(number).y };
}

} // namespace kestrel::stage::SetupPlaces
