<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>host::BandWidget</name>
    <message numerus="yes">
        <source>All %n notch filters of this band are in use.</source>
        <translation>
            <numerusform>The only notch filter of this band is in use.</numerusform>
            <numerusform>All %n notch filters of this band are in use.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>host::MainWindow</name>
    <message numerus="yes">
        <source>%n lines</source>
        <translation>
            <numerusform>%n line</numerusform>
            <numerusform>%n lines</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>host::RecordBar</name>
    <message numerus="yes">
        <source>, %n files</source>
        <translation>
            <numerusform>, %n file</numerusform>
            <numerusform>, %n files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n samples LOST</source>
        <translation>
            <numerusform>, %n sample LOST</numerusform>
            <numerusform>, %n samples LOST</numerusform>
        </translation>
    </message>
</context>
</TS>
