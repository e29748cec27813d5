// SPDX-License-Identifier: GPL-3.0-or-later
// Fills the options of velmora-host into its man page, so that page and --help are one table.
// usage: man_options < PAGE > FILLED PAGE
#include "settings/OptionTable.h"

#include <QTextStream>

#include <cstdio>

namespace
{
constexpr char kPlace[] = ".\\\" OPTIONS"; // a comment line of the page

/// Plain text for troff.
QString escaped(const QString &text)
{
    QString page = text;
    page.replace('\\', "\\e").replace('-', "\\-").replace('\'', "\\(aq");
    return page.startsWith('.') ? "\\&" + page : page;
}

QString entry(const host::Option &option)
{
    QString head = ".TP\n.BI \"\\-\\-" + escaped(option.name);
    if (option.argument)
        head += " \" \"" + escaped(option.argument);
    return head + "\"\n" + escaped(option.helpText()) + '\n';
}
} // namespace

int main()
{
    QTextStream in(stdin);
    QTextStream out(stdout);
    in.setCodec("UTF-8");
    out.setCodec("UTF-8");
    int places = 0;
    for (QString line = in.readLine(); !line.isNull(); line = in.readLine()) {
        if (line != kPlace) {
            out << line << '\n';
            continue;
        }
        ++places;
        for (const host::Option &option : host::optionTable())
            out << entry(option);
    }
    if (places == 1)
        return 0;
    std::fputs("man_options: the page has not one place for the options\n", stderr);
    return 1;
}
