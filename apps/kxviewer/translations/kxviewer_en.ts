<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>DeviceDialog</name>
    <message numerus="yes">
        <source>%n camera(s) that can&apos;t be opened are hidden; the check box shows them.</source>
        <translation>
            <numerusform>A camera that can&apos;t be opened is hidden; the check box shows it.</numerusform>
            <numerusform>%n cameras that can&apos;t be opened are hidden; the check box shows them.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>DiagnosticArchive</name>
    <message numerus="yes">
        <source>%1 hasn&apos;t told anything for %n second(s).</source>
        <translation>
            <numerusform>%1 hasn&apos;t told anything for one second.</numerusform>
            <numerusform>%1 hasn&apos;t told anything for %n seconds.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RecordingDock</name>
    <message numerus="yes">
        <source>Recorded %n image(s), %1 lost: %2</source>
        <translation>
            <numerusform>Recorded one image, %1 lost: %2</numerusform>
            <numerusform>Recorded %n images, %1 lost: %2</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n image(s), %1 MB written, %2 MB/s; %3 waiting, %4 lost, %5 incomplete</source>
        <translation>
            <numerusform>One image, %1 MB written, %2 MB/s; %3 waiting, %4 lost, %5 incomplete</numerusform>
            <numerusform>%n images, %1 MB written, %2 MB/s; %3 waiting, %4 lost, %5 incomplete</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RingPanel</name>
    <message numerus="yes">
        <source>%n image(s), %1 s, %2 MB</source>
        <translation>
            <numerusform>One image, %1 s, %2 MB</numerusform>
            <numerusform>%n images, %1 s, %2 MB</numerusform>
        </translation>
    </message>
</context>
</TS>
