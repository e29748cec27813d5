// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>

/// The host's Morse coder and decoder.
///
/// The host's own; a device never calls it. Its operations stand for their places in the host's
/// table of virtual operations.
class CwCoreAbstract : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    virtual void reserved1() = 0;
    virtual void reserved2() = 0;
    virtual void reserved3() = 0;
    virtual void reserved4() = 0;
    virtual void reserved5() = 0;
    virtual void reserved6() = 0;
    virtual void reserved7() = 0;
    virtual void reserved8() = 0;
    virtual void reserved9() = 0;
    virtual void reserved10() = 0;
    virtual void reserved11() = 0;
    virtual void reserved12() = 0;
    virtual void reserved13() = 0;
    virtual void reserved14() = 0;
    virtual void reserved15() = 0;
    virtual void reserved16() = 0;
    virtual void reserved17() = 0;
};
