<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>recorder</name>
    <message>
        <source>Records a voice as a wave file for the exposure sheet.</source>
        <translation>Nimmt eine Stimme als Wave-Datei für das Exposure Sheet auf.</translation>
    </message>
</context>
<context>
    <name>recorder::LevelMeter</name>
    <message>
        <source>Recording level</source>
        <translation>Aufnahmepegel</translation>
    </message>
    <message>
        <source>The loudest places belong between -18 and -6 decibels.</source>
        <translation>Die lautesten Stellen gehören zwischen -18 und -6 Dezibel.</translation>
    </message>
    <message>
        <source>The loudest is at %1 decibels</source>
        <translation>Die lauteste Stelle liegt bei %1 Dezibel</translation>
    </message>
</context>
<context>
    <name>recorder::RecorderWindow</name>
    <message>
        <source>Looking for recording devices...</source>
        <translation>Aufnahmegeräte werden gesucht …</translation>
    </message>
    <message>
        <source>A recording can&apos;t be kept in &quot;%1&quot;: %2</source>
        <translation>In „%1“ kann keine Aufnahme abgelegt werden: %2</translation>
    </message>
    <message>
        <source>Opening &quot;%1&quot;...</source>
        <translation>„%1“ wird geöffnet …</translation>
    </message>
    <message>
        <source>Nothing was recorded.</source>
        <translation>Es wurde nichts aufgenommen.</translation>
    </message>
    <message>
        <source>What was recorded until then is kept: %1.</source>
        <translation>Was bis dahin aufgenommen wurde, ist erhalten: %1.</translation>
    </message>
    <message>
        <source>Recorded, but too loud in places: the sound is cut there. Go back from the microphone, or turn it down, and record again.</source>
        <translation>Aufgenommen, aber stellenweise zu laut: Der Ton ist dort abgeschnitten. Gehen Sie weiter weg vom Mikrofon, oder stellen Sie es leiser, und nehmen Sie noch einmal auf.</translation>
    </message>
    <message>
        <source>Recorded. Listen to it, or save it.</source>
        <translation>Aufgenommen. Hören Sie es an, oder speichern Sie es.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can&apos;t be opened. Another program may be using it.</source>
        <translation>„%1“ kann nicht geöffnet werden. Vielleicht benutzt es ein anderes Programm.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; doesn&apos;t answer.</source>
        <translation>„%1“ antwortet nicht.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; has gone.</source>
        <translation>„%1“ ist verschwunden.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; delivers no sound any more.</source>
        <translation>„%1“ liefert keinen Ton mehr.</translation>
    </message>
    <message>
        <source>The disk is too slow for the recording.</source>
        <translation>Die Platte ist zu langsam für die Aufnahme.</translation>
    </message>
    <message>
        <source>The recording can&apos;t be written: %1.</source>
        <translation>Die Aufnahme kann nicht geschrieben werden: %1.</translation>
    </message>
    <message>
        <source>The recording has the greatest length that a file can have.</source>
        <translation>Die Aufnahme hat die größte Länge, die eine Datei haben kann.</translation>
    </message>
    <message>
        <source>There is no device to listen with.</source>
        <translation>Es gibt kein Gerät zum Anhören.</translation>
    </message>
    <message>
        <source>The sound system doesn&apos;t answer.</source>
        <translation>Das Tonsystem antwortet nicht.</translation>
    </message>
    <message>
        <source>No recording device was found. Connect a microphone, and it appears here.</source>
        <translation>Es wurde kein Aufnahmegerät gefunden. Schließen Sie ein Mikrofon an, und es erscheint hier.</translation>
    </message>
    <message>
        <source>Press &quot;Record&quot; and speak. The loudest places belong between -18 and -6 decibels.</source>
        <translation>Drücken Sie „Aufnehmen“ und sprechen Sie. Die lautesten Stellen gehören zwischen -18 und -6 Dezibel.</translation>
    </message>
    <message>
        <source>A recording of %1 wasn&apos;t saved when the recorder ended. Here it is: listen to it, or save it.</source>
        <translation>Eine Aufnahme von %1 war nicht gespeichert, als das Programm endete. Hier ist sie: Hören Sie sie an, oder speichern Sie sie.</translation>
    </message>
    <message>
        <source>recording</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>recording %1</source>
        <translation>Aufnahme %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; can&apos;t be saved: %2</source>
        <translation>„%1“ kann nicht gespeichert werden: %2</translation>
    </message>
    <message>
        <source>Saved as &quot;%1&quot;. Open it in the exposure sheet with &quot;Open Wave file...&quot;.</source>
        <translation>Gespeichert als „%1“. Öffnen Sie es im Exposure Sheet mit „Open Wave file...“.</translation>
    </message>
    <message>
        <source>Recording from &quot;%1&quot;.</source>
        <translation>Aufnahme von „%1“.</translation>
    </message>
    <message>
        <source>&amp;Record</source>
        <translation>&amp;Aufnehmen</translation>
    </message>
    <message>
        <source>Begin a new recording</source>
        <translation>Eine neue Aufnahme beginnen</translation>
    </message>
    <message>
        <source>S&amp;top</source>
        <translation>S&amp;topp</translation>
    </message>
    <message>
        <source>Stop recording or listening</source>
        <translation>Aufnahme oder Anhören anhalten</translation>
    </message>
    <message>
        <source>&amp;Listen</source>
        <translation>An&amp;hören</translation>
    </message>
    <message>
        <source>Hear what was recorded</source>
        <translation>Hören, was aufgenommen wurde</translation>
    </message>
    <message>
        <source>&amp;Save as...</source>
        <translation>&amp;Speichern unter …</translation>
    </message>
    <message>
        <source>Save the recording as a wave file</source>
        <translation>Die Aufnahme als Wave-Datei speichern</translation>
    </message>
    <message>
        <source>Re&amp;cording</source>
        <translation>Au&amp;fnahme</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About the recorder</source>
        <translation>Ü&amp;ber das Aufnahmeprogramm</translation>
    </message>
    <message>
        <source>Recorder</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Record &amp;from</source>
        <translation>Aufnehmen &amp;von</translation>
    </message>
    <message>
        <source>Recording device</source>
        <translation>Aufnahmegerät</translation>
    </message>
    <message>
        <source>No recording device</source>
        <translation>Kein Aufnahmegerät</translation>
    </message>
    <message>
        <source>Length</source>
        <translation>Länge</translation>
    </message>
    <message>
        <source>What the recorder is doing</source>
        <translation>Was das Programm gerade tut</translation>
    </message>
    <message>
        <source>The recording of %1 isn&apos;t saved.</source>
        <translation>Die Aufnahme von %1 ist nicht gespeichert.</translation>
    </message>
    <message>
        <source>Without saving it is lost.</source>
        <translation>Ohne Speichern ist sie verloren.</translation>
    </message>
    <message>
        <source>Save the recording</source>
        <translation>Die Aufnahme speichern</translation>
    </message>
    <message>
        <source>Wave files (*.wav)</source>
        <translation>Wave-Dateien (*.wav)</translation>
    </message>
    <message>
        <source>About the recorder</source>
        <translation>Über das Aufnahmeprogramm</translation>
    </message>
    <message>
        <source>Recorder of the exposure sheet, version %1.

It records one channel of 16 bits at %2 samples a second and saves wave files that the exposure sheet opens.</source>
        <translation>Aufnahmeprogramm des Exposure Sheets, Version %1.

Es nimmt einen Kanal mit 16 Bit und %2 Abtastwerten pro Sekunde auf und speichert Wave-Dateien, die das Exposure Sheet öffnet.</translation>
    </message>
    <message>
        <source>Something has gone wrong: %1</source>
        <translation>Etwas ist schiefgegangen: %1</translation>
    </message>
</context>
</TS>
