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
    <name>RecordingDock</name>
    <message numerus="yes">
        <source>Recorded %n image(s), %1 lost: %2</source>
        <translation>
            <numerusform>Recorded one image, %1 lost: %2</numerusform>
            <numerusform>Recorded %n images, %1 lost: %2</numerusform>
        </translation>
    </message>
</context>
</TS>
