// OleDateTime.cpp - conversions through the automation date functions and
// formatting through wcsftime.
#include "platform/ole/OleDateTime.h"

#include <ctime>

namespace {

const UINT kInvalidDateTimeText = 55296;

CString InvalidText()
{
    CString text;
    if (!text.LoadString(kInvalidDateTimeText))
        text = L"Invalid DateTime";
    return text;
}

// Day of the year, 0 for 1 January, as struct tm counts it.
int DayOfYear(const SYSTEMTIME& time)
{
    static const int kBefore[12] = {0, 31, 59, 90, 120, 151, 181, 212, 243, 273, 304, 334};
    const int year = time.wYear;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    return kBefore[time.wMonth - 1] + time.wDay - 1 + (leap && time.wMonth > 2 ? 1 : 0);
}

// wcsftime, one directive at a time: the platform's runtime passes the
// format through the ANSI code page, which would spoil "年月日" and every
// other character outside it, so literal text is copied here. The whole
// result holds at most 255 characters, else it is empty.
CString FormatParts(const wchar_t* format, const std::tm& parts)
{
    CString text;
    wchar_t piece[256];
    for (const wchar_t* at = format; *at != L'\0';)
    {
        if (*at != L'%' || at[1] == L'\0')
        {
            text += *at++;
            continue;
        }
        const int length = at[1] == L'#' && at[2] != L'\0' ? 3 : 2;
        const wchar_t directive[4] = {at[0], at[1], length == 3 ? at[2] : L'\0', L'\0'};
        if (std::wcsftime(piece, 256, directive, &parts) > 0)
            text += piece;
        at += length;
    }
    return text.GetLength() < 256 ? text : CString();
}

} // namespace

COleDateTime::COleDateTime(const SYSTEMTIME& time)
{
    SYSTEMTIME copy = time;
    copy.wMilliseconds = 0;
    m_status = ::SystemTimeToVariantTime(&copy, &m_dt) ? valid : invalid;
}

COleDateTime::COleDateTime(int year, int month, int day, int hour, int minute, int second)
{
    SetDateTime(year, month, day, hour, minute, second);
}

int COleDateTime::SetDateTime(int year, int month, int day, int hour, int minute, int second)
{
    const bool inRange = year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 && day <= 31 &&
                         hour >= 0 && hour <= 23 && minute >= 0 && minute <= 59 && second >= 0 && second <= 59;
    SYSTEMTIME time{};
    time.wYear = static_cast<WORD>(year);
    time.wMonth = static_cast<WORD>(month);
    time.wDay = static_cast<WORD>(day);
    time.wHour = static_cast<WORD>(hour);
    time.wMinute = static_cast<WORD>(minute);
    time.wSecond = static_cast<WORD>(second);
    SYSTEMTIME back{};
    m_status = inRange && ::SystemTimeToVariantTime(&time, &m_dt) && ::VariantTimeToSystemTime(m_dt, &back) &&
                       back.wDay == time.wDay
                   ? valid
                   : invalid;
    if (m_status == invalid)
        m_dt = 0.0;
    return m_status == valid ? 0 : 1;
}

BOOL COleDateTime::GetAsSystemTime(SYSTEMTIME& time) const
{
    return m_status == valid && ::VariantTimeToSystemTime(m_dt, &time);
}

CString COleDateTime::Format(const wchar_t* format) const
{
    if (m_status == null)
        return CString();
    SYSTEMTIME time{};
    if (!GetAsSystemTime(time))
        return InvalidText();
    if (format == nullptr)
        return CString();
    std::tm parts{};
    parts.tm_year = time.wYear - 1900;
    parts.tm_mon = time.wMonth - 1;
    parts.tm_mday = time.wDay;
    parts.tm_hour = time.wHour;
    parts.tm_min = time.wMinute;
    parts.tm_sec = time.wSecond;
    parts.tm_wday = time.wDayOfWeek;
    parts.tm_yday = DayOfYear(time);
    parts.tm_isdst = -1;
    return FormatParts(format, parts);
}
