<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AudioFile</name>
    <message>
        <source>another program is writing it</source>
        <translation>ein anderes Programm schreibt sie gerade</translation>
    </message>
    <message>
        <source>the file was taken away</source>
        <translation>die Datei wurde weggenommen</translation>
    </message>
    <message>
        <source>; what was there before stays, what is new is in %1</source>
        <translation>; das Vorherige bleibt, das Neue ist in %1</translation>
    </message>
</context>
<context>
    <name>AudioPlayer</name>
    <message>
        <source>no audio that can be played</source>
        <translation>kein Ton, der abgespielt werden kann</translation>
    </message>
</context>
<context>
    <name>BookmarkField</name>
    <message>
        <source>the closing quotation mark is missing</source>
        <translation>das schließende Anführungszeichen fehlt</translation>
    </message>
    <message>
        <source>%1 fields instead of %2</source>
        <translation>%1 Felder statt %2</translation>
    </message>
    <message>
        <source>is not text in UTF-8</source>
        <translation>ist kein Text in UTF-8</translation>
    </message>
    <message>
        <source>has no column &apos;%1&apos; in its first line</source>
        <translation>hat in der ersten Zeile keine Spalte „%1“</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>the frequency &apos;%1&apos; is no number</source>
        <translation>die Frequenz „%1“ ist keine Zahl</translation>
    </message>
    <message>
        <source>the frequency %1 is out of range</source>
        <translation>die Frequenz %1 liegt außerhalb des Bereichs</translation>
    </message>
    <message>
        <source>unknown mode &apos;%1&apos;</source>
        <translation>unbekannte Betriebsart „%1“</translation>
    </message>
    <message>
        <source>the filter &apos;%1&apos; is not two numbers as 300:2700</source>
        <translation>das Filter „%1“ sind nicht zwei Zahlen wie 300:2700</translation>
    </message>
    <message>
        <source>the filter %1 does not rise</source>
        <translation>die Grenzen des Filters %1 steigen nicht an</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Betriebsart</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>Note</source>
        <translation>Notiz</translation>
    </message>
</context>
<context>
    <name>ChoiceGrid</name>
    <message>
        <source>Band</source>
        <translation>Band</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Betriebsart</translation>
    </message>
    <message>
        <source>Filter</source>
        <translation>Filter</translation>
    </message>
    <message>
        <source>AGC</source>
        <translation>AGC</translation>
    </message>
</context>
<context>
    <name>D2xxLibrary</name>
    <message>
        <source>%1: %2 is not beside the program; install it anew, or name a library with --d2xx</source>
        <translation>%1: %2 liegt nicht beim Programm; bitte neu installieren oder mit --d2xx eine Bibliothek angeben</translation>
    </message>
    <message>
        <source>%1: %2 has no %3()</source>
        <translation>%1: %2 hat kein %3()</translation>
    </message>
</context>
<context>
    <name>Dial</name>
    <message>
        <source>Volume</source>
        <translation>Lautstärke</translation>
    </message>
    <message>
        <source>Loudness of all that is heard; at the left end silence</source>
        <translation>Lautstärke von allem, was zu hören ist; am linken Ende Stille</translation>
    </message>
    <message>
        <source>Volume A</source>
        <translation>Lautst. A</translation>
    </message>
    <message>
        <source>Loudness of VFO A beside B</source>
        <translation>Lautstärke von VFO A neben B</translation>
    </message>
    <message>
        <source>Volume B</source>
        <translation>Lautst. B</translation>
    </message>
    <message>
        <source>Loudness of VFO B beside A</source>
        <translation>Lautstärke von VFO B neben A</translation>
    </message>
    <message>
        <source>Balance</source>
        <translation>Balance</translation>
    </message>
    <message>
        <source>Above 0 the right ear is quieter, below 0 the left</source>
        <translation>Über 0 ist das rechte Ohr leiser, unter 0 das linke</translation>
    </message>
    <message>
        <source>AGC gain</source>
        <translation>AGC-Verst.</translation>
    </message>
    <message>
        <source>Highest gain of the gain control, or its gain while off</source>
        <translation>Höchste Verstärkung der Regelung, oder ihre Verstärkung, wenn sie aus ist</translation>
    </message>
    <message>
        <source>Squelch</source>
        <translation>Squelch</translation>
    </message>
    <message>
        <source>Level that a signal needs to be heard</source>
        <translation>Pegel, den ein Signal braucht, um gehört zu werden</translation>
    </message>
    <message>
        <source>Tone</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Squelch tone, by its number</source>
        <translation>Pilotton der Rauschsperre, nach seiner Nummer</translation>
    </message>
    <message>
        <source>Preamp</source>
        <translation>Vorverst.</translation>
    </message>
    <message>
        <source>Below 0 attenuates, above 0 amplifies what the aerial gives</source>
        <translation>Unter 0 wird abgeschwächt, über 0 verstärkt, was die Antenne liefert</translation>
    </message>
    <message>
        <source>RIT</source>
        <translation>RIT</translation>
    </message>
    <message>
        <source>How far beside the frequency shown is received</source>
        <translation>Wie weit neben der angezeigten Frequenz empfangen wird</translation>
    </message>
</context>
<context>
    <name>FlacFile</name>
    <message>
        <source>not all of it could be written</source>
        <translation>nicht alles konnte geschrieben werden</translation>
    </message>
</context>
<context>
    <name>PanelAction</name>
    <message>
        <source>Frequency, by the step</source>
        <translation>Frequenz, um den Schritt</translation>
    </message>
    <message>
        <source>Mode</source>
        <translation>Betriebsart</translation>
    </message>
    <message>
        <source>Filter of the mode</source>
        <translation>Filter der Betriebsart</translation>
    </message>
    <message>
        <source>Amateur band, as it was left</source>
        <translation>Amateurband, wie es verlassen wurde</translation>
    </message>
    <message>
        <source>Step of the frequency</source>
        <translation>Schritt der Frequenz</translation>
    </message>
    <message>
        <source>The other VFO</source>
        <translation>Der andere VFO</translation>
    </message>
    <message>
        <source>A and B change places</source>
        <translation>A und B tauschen die Plätze</translation>
    </message>
    <message>
        <source>Hear both VFOs</source>
        <translation>Beide VFOs hören</translation>
    </message>
    <message>
        <source>Hold the frequency</source>
        <translation>Frequenz festhalten</translation>
    </message>
    <message>
        <source>Receiver on and off</source>
        <translation>Empfänger ein und aus</translation>
    </message>
    <message>
        <source>Keystroke for the program that has the focus, as Control_L+F5</source>
        <translation>Tastendruck für das Programm mit dem Fokus, etwa Control_L+F5</translation>
    </message>
</context>
<context>
    <name>PanelMap</name>
    <message>
        <source>%1 is missing</source>
        <translation>%1 fehlt</translation>
    </message>
    <message>
        <source>unknown code &apos;%1&apos;</source>
        <translation>unbekannter Code „%1“</translation>
    </message>
    <message>
        <source>a shortcut</source>
        <translation>ein Tastenkürzel</translation>
    </message>
    <message>
        <source>unknown shortcut &apos;%1&apos;</source>
        <translation>unbekanntes Tastenkürzel „%1“</translation>
    </message>
    <message>
        <source>an action</source>
        <translation>eine Aktion</translation>
    </message>
    <message>
        <source>unknown action &apos;%1&apos;</source>
        <translation>unbekannte Aktion „%1“</translation>
    </message>
    <message>
        <source>line %1: %2</source>
        <translation>Zeile %1: %2</translation>
    </message>
    <message>
        <source>the device</source>
        <translation>das Gerät</translation>
    </message>
    <message>
        <source>unknown word &apos;%1&apos;</source>
        <translation>unbekanntes Wort „%1“</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is too much</source>
        <translation>„%1“ ist zu viel</translation>
    </message>
    <message>
        <source>a key</source>
        <translation>eine Taste</translation>
    </message>
    <message>
        <source>the key has an action already</source>
        <translation>die Taste hat schon eine Aktion</translation>
    </message>
    <message>
        <source>a knob</source>
        <translation>ein Drehknopf</translation>
    </message>
    <message>
        <source>the knob has an action already</source>
        <translation>der Drehknopf hat schon eine Aktion</translation>
    </message>
    <message>
        <source>%1 takes nothing after it</source>
        <translation>nach %1 darf nichts stehen</translation>
    </message>
    <message>
        <source>%1 takes %2, not &apos;%3&apos;</source>
        <translation>%1 nimmt %2, nicht „%3“</translation>
    </message>
    <message>
        <source>%1 is nothing for a knob</source>
        <translation>%1 ist nichts für einen Drehknopf</translation>
    </message>
    <message>
        <source>%1 steps are too many</source>
        <translation>%1 Schritte sind zu viele</translation>
    </message>
    <message>
        <source>&apos;%1&apos; is neither fixed N nor adaptive [MOST]</source>
        <translation>„%1“ ist weder fixed N noch adaptive [MOST]</translation>
    </message>
    <message>
        <source>up and down are the same shortcut</source>
        <translation>auf und ab sind dasselbe Tastenkürzel</translation>
    </message>
    <message>
        <source>the shortcut has an action already</source>
        <translation>das Tastenkürzel hat schon eine Aktion</translation>
    </message>
</context>
<context>
    <name>ReceiverReason</name>
    <message>
        <source>cannot open the recording</source>
        <translation>die Aufnahme lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>not a WAV file</source>
        <translation>keine WAV-Datei</translation>
    </message>
    <message>
        <source>no &quot;fmt &quot; chunk</source>
        <translation>kein Abschnitt „fmt “</translation>
    </message>
    <message>
        <source>no samples</source>
        <translation>keine Abtastwerte</translation>
    </message>
    <message>
        <source>%1 channels, an IQ recording has 2</source>
        <translation>Kanäle: %1; eine IQ-Aufnahme hat 2</translation>
    </message>
    <message>
        <source>WAV format %1 with %2 bits is not supported</source>
        <translation>WAV-Format %1 mit %2 Bit wird nicht unterstützt</translation>
    </message>
    <message>
        <source>unknown recording format &quot;%1&quot; (%2)</source>
        <translation>unbekanntes Aufnahmeformat „%1“ (%2)</translation>
    </message>
    <message>
        <source>a sample rate is needed</source>
        <translation>eine Abtastrate muss angegeben werden</translation>
    </message>
    <message>
        <source>a sample rate of %1 Hz, it must be %2 to %3, in audio file %4</source>
        <translation>Abtastrate %1 Hz, sie muss %2 bis %3 sein, in der Tondatei %4</translation>
    </message>
    <message>
        <source>a sample rate of %1 Hz, it must be %2 to %3</source>
        <translation>Abtastrate %1 Hz, sie muss %2 bis %3 sein</translation>
    </message>
    <message>
        <source>a frequency of %1 Hz, it must be %2 to %3</source>
        <translation>Frequenz %1 Hz, sie muss %2 bis %3 sein</translation>
    </message>
    <message>
        <source>its header has another rate than the %1 Hz that are given: %2 Hz</source>
        <translation>ihr Kopf nennt eine andere Rate als die angegebenen %1 Hz: %2 Hz</translation>
    </message>
    <message>
        <source>the file is shorter than its header says</source>
        <translation>die Datei ist kürzer, als ihr Kopf angibt</translation>
    </message>
    <message>
        <source>the file is longer than its header says</source>
        <translation>die Datei ist länger, als ihr Kopf angibt</translation>
    </message>
    <message>
        <source>the header was never written: the recording was broken off</source>
        <translation>der Kopf wurde nie geschrieben: die Aufnahme wurde abgebrochen</translation>
    </message>
    <message>
        <source>cannot open the band file</source>
        <translation>die Bandbeschreibung lässt sich nicht öffnen</translation>
    </message>
    <message>
        <source>unknown line &quot;%1&quot; (%2)</source>
        <translation>unbekannte Zeile „%1“ (%2)</translation>
    </message>
    <message>
        <source>no band line</source>
        <translation>keine Zeile „band“</translation>
    </message>
    <message>
        <source>a second band line</source>
        <translation>eine zweite Zeile „band“</translation>
    </message>
    <message>
        <source>the band line must come before the first station</source>
        <translation>die Zeile „band“ muss vor dem ersten Sender stehen</translation>
    </message>
    <message>
        <source>a band needs %1</source>
        <translation>einem Band fehlt %1</translation>
    </message>
    <message>
        <source>a station needs either %1 or %2</source>
        <translation>einem Sender fehlt %1 oder %2, oder er hat beide</translation>
    </message>
    <message>
        <source>a station needs %1</source>
        <translation>einem Sender fehlt %1</translation>
    </message>
    <message>
        <source>a cw station needs %1</source>
        <translation>einem CW-Sender fehlt %1</translation>
    </message>
    <message>
        <source>the text of a cw station is empty</source>
        <translation>der Text eines CW-Senders ist leer</translation>
    </message>
    <message>
        <source>this station needs one of %1</source>
        <translation>dieser Sender braucht genau eines von %1</translation>
    </message>
    <message>
        <source>unknown mode &quot;%1&quot; (%2)</source>
        <translation>unbekannte Betriebsart „%1“ (%2)</translation>
    </message>
    <message>
        <source>&quot;%1&quot; needs a value: %2</source>
        <translation>„%1“ braucht einen Wert: %2</translation>
    </message>
    <message>
        <source>the text of &quot;%1&quot; has no closing quote</source>
        <translation>dem Text von „%1“ fehlt das schließende Anführungszeichen</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is given twice</source>
        <translation>„%1“ ist zweimal angegeben</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be above 0 and at most 5000 Hz, not &quot;%2&quot;</source>
        <translation>„%1“ muss über 0 und höchstens 5000 Hz sein, nicht „%2“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be yes or no, not &quot;%2&quot;</source>
        <translation>„%1“ muss yes oder no sein, nicht „%2“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; must be %2 to %3, not &quot;%4&quot;</source>
        <translation>„%1“ muss %2 bis %3 sein, nicht „%4“</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a number: &quot;%2&quot;</source>
        <translation>„%1“ ist keine Zahl: „%2“</translation>
    </message>
    <message>
        <source>a %1 has no &quot;%2&quot; here</source>
        <translation>in einer Zeile „%1“ gibt es hier kein „%2“</translation>
    </message>
    <message>
        <source>cannot read audio file %1</source>
        <translation>die Tondatei %1 lässt sich nicht lesen</translation>
    </message>
    <message>
        <source>no samples in audio file %1</source>
        <translation>keine Abtastwerte in der Tondatei %1</translation>
    </message>
</context>
<context>
    <name>SceneSetup</name>
    <message>
        <source>--%1 needs the virtual receiver (--device virtual)</source>
        <translation>--%1 braucht den virtuellen Empfänger (--device virtual)</translation>
    </message>
    <message>
        <source>built-in scene</source>
        <translation>eingebautes Band</translation>
    </message>
    <message>
        <source>%1: %2; taken to be at --rate, as no --scene-rate is given</source>
        <translation>%1: %2; angenommen wird die Rate von --rate, da --scene-rate fehlt</translation>
    </message>
    <message>
        <source>--%1 does nothing for a band description</source>
        <translation>--%1 bewirkt bei einer Bandbeschreibung nichts</translation>
    </message>
    <message>
        <source>the scene has nothing around --center %1, it goes from %2 to %3</source>
        <translation>um --center %1 ist nichts zu empfangen, das Band reicht von %2 bis %3</translation>
    </message>
    <message>
        <source>the scene has nothing at --tune %1, it goes from %2 to %3</source>
        <translation>bei --tune %1 ist nichts zu empfangen, das Band reicht von %2 bis %3</translation>
    </message>
</context>
<context>
    <name>SenderKeyToSystem</name>
    <message>
        <source>There is no X server to send %1 to.</source>
        <translation>Es gibt keinen X-Server, an den %1 gesendet werden kann.</translation>
    </message>
    <message>
        <source>The X server takes no keys from programs; %1 is not sent.</source>
        <translation>Der X-Server nimmt keine Tasten von Programmen an; %1 wird nicht gesendet.</translation>
    </message>
    <message>
        <source>%1 is not sent: there is no key &apos;%2&apos;.</source>
        <translation>%1 wird nicht gesendet: es gibt keine Taste „%2“.</translation>
    </message>
    <message>
        <source>%1 is not sent: the keyboard has no &apos;%2&apos;.</source>
        <translation>%1 wird nicht gesendet: die Tastatur hat kein „%2“.</translation>
    </message>
</context>
<context>
    <name>SettingsStore</name>
    <message>
        <source>cannot be read, this run starts from defaults</source>
        <translation>kann nicht gelesen werden, es gelten die Voreinstellungen</translation>
    </message>
    <message>
        <source>is damaged, what could be read of it is used</source>
        <translation>ist beschädigt; was noch lesbar war, gilt</translation>
    </message>
    <message>
        <source>cannot be written</source>
        <translation>kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>is not saved: it is damaged and cannot be kept as %1</source>
        <translation>wird nicht gespeichert: sie ist beschädigt und kann nicht als %1 aufgehoben werden</translation>
    </message>
    <message>
        <source>is not saved: the folder cannot be made</source>
        <translation>wird nicht gespeichert: der Ordner kann nicht angelegt werden</translation>
    </message>
    <message>
        <source>is not saved: %1</source>
        <translation>wird nicht gespeichert: %1</translation>
    </message>
    <message>
        <source>settings file %1 %2</source>
        <translation>Einstellungsdatei %1 %2</translation>
    </message>
</context>
<context>
    <name>Switch</name>
    <message>
        <source>NB1</source>
        <translation>NB1</translation>
    </message>
    <message>
        <source>Mutes impulses, such as those of an electric fence</source>
        <translation>Tastet Störimpulse aus, etwa die eines Weidezauns</translation>
    </message>
    <message>
        <source>NB2</source>
        <translation>NB2</translation>
    </message>
    <message>
        <source>Smooths impulses, such as those of an ignition</source>
        <translation>Glättet Störimpulse, etwa die einer Zündung</translation>
    </message>
    <message>
        <source>NR</source>
        <translation>NR</translation>
    </message>
    <message>
        <source>Takes noise out of speech and telegraphy</source>
        <translation>Nimmt Rauschen aus Sprache und Telegrafie</translation>
    </message>
    <message>
        <source>ANF</source>
        <translation>ANF</translation>
    </message>
    <message>
        <source>Finds steady whistles and takes them out</source>
        <translation>Findet gleichbleibende Pfeiftöne und nimmt sie heraus</translation>
    </message>
    <message>
        <source>APF</source>
        <translation>APF</translation>
    </message>
    <message>
        <source>Lifts the pitch of a weak station out of the noise</source>
        <translation>Hebt den Ton einer schwachen Station aus dem Rauschen</translation>
    </message>
    <message>
        <source>DSE</source>
        <translation>DSE</translation>
    </message>
    <message>
        <source>Spreads telegraphy between the ears by its pitch</source>
        <translation>Verteilt Telegrafie nach der Tonhöhe auf die Ohren</translation>
    </message>
    <message>
        <source>BIN</source>
        <translation>BIN</translation>
    </message>
    <message>
        <source>Gives each ear its own phase, which sounds wider</source>
        <translation>Gibt jedem Ohr eine eigene Phase, das klingt räumlicher</translation>
    </message>
    <message>
        <source>SQL</source>
        <translation>SQL</translation>
    </message>
    <message>
        <source>Silence while the signal is below the level</source>
        <translation>Stille, solange das Signal unter dem Pegel liegt</translation>
    </message>
    <message>
        <source>CTCSS</source>
        <translation>CTCSS</translation>
    </message>
    <message>
        <source>Silence without the tone; together with SQL the end of a transmission is quiet</source>
        <translation>Stille ohne den Pilotton; zusammen mit SQL ist auch das Ende einer Aussendung ruhig</translation>
    </message>
    <message>
        <source>EQ</source>
        <translation>EQ</translation>
    </message>
    <message>
        <source>Shapes the audio with 18 sliders</source>
        <translation>Formt den Klang mit 18 Reglern</translation>
    </message>
    <message>
        <source>Stereo</source>
        <translation>Stereo</translation>
    </message>
    <message>
        <source>Wide FM in stereo where it is broadcast so</source>
        <translation>UKW-Rundfunk in Stereo, wo er so gesendet wird</translation>
    </message>
    <message>
        <source>Mute</source>
        <translation>Stumm</translation>
    </message>
    <message>
        <source>No sound</source>
        <translation>Kein Ton</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
    </message>
    <message>
        <source>The receiver chooses attenuator and preamplifier</source>
        <translation>Der Empfänger wählt Abschwächer und Vorverstärker selbst</translation>
    </message>
    <message>
        <source>RIT</source>
        <translation>RIT</translation>
    </message>
    <message>
        <source>Receives beside the frequency shown</source>
        <translation>Empfängt neben der angezeigten Frequenz</translation>
    </message>
</context>
<context>
    <name>WindowRun</name>
    <message>
        <source>--%1 has an effect with --headless only</source>
        <translation>--%1 wirkt nur zusammen mit --headless</translation>
    </message>
</context>
<context>
    <name>host::BandBar</name>
    <message>
        <source>%1 to %2 MHz, as last used</source>
        <translation>%1 bis %2 MHz, wie zuletzt benutzt</translation>
    </message>
</context>
<context>
    <name>host::BandWidget</name>
    <message numerus="yes">
        <source>All %n notch filters of this band are in use.</source>
        <translation>
            <numerusform>Das einzige Notchfilter dieses Bandes ist schon benutzt.</numerusform>
            <numerusform>Alle %n Notchfilter dieses Bandes sind schon benutzt.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>host::BookmarkDialog</name>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Abstimmen</translation>
    </message>
    <message>
        <source>&amp;Add what is heard</source>
        <translation>Gehörtes &amp;hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Import…</source>
        <translation>&amp;Importieren…</translation>
    </message>
    <message>
        <source>&amp;Export…</source>
        <translation>E&amp;xportieren…</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>Bookmarks</source>
        <translation>Lesezeichen</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Search in the bookmarks</source>
        <translation>In den Lesezeichen suchen</translation>
    </message>
    <message>
        <source>new</source>
        <translation>neu</translation>
    </message>
    <message>
        <source>Import bookmarks</source>
        <translation>Lesezeichen importieren</translation>
    </message>
    <message>
        <source>Tables (*.csv)</source>
        <translation>Tabellen (*.csv)</translation>
    </message>
    <message>
        <source>%1 added, %2 were there already.</source>
        <translation>%1 hinzugefügt, %2 waren schon da.</translation>
    </message>
    <message>
        <source>Export bookmarks</source>
        <translation>Lesezeichen exportieren</translation>
    </message>
</context>
<context>
    <name>host::BookmarkFile</name>
    <message>
        <source>The bookmarks in %1 cannot be read (%2), nor put aside; changes of this run are not kept.</source>
        <translation>Die Lesezeichen in %1 sind weder lesbar (%2) noch beiseitezulegen; Änderungen gelten nur bis zum Ende des Programms.</translation>
    </message>
    <message>
        <source>Some bookmarks in %1 cannot be read (%2); the file as it was is kept as %3.</source>
        <translation>Einige Lesezeichen in %1 sind nicht lesbar (%2); die bisherige Datei ist als %3 aufgehoben.</translation>
    </message>
    <message>
        <source>The bookmarks in %1 cannot be read (%2); the file is kept as %3, and the standard ones are there instead.</source>
        <translation>Die Lesezeichen in %1 sind nicht lesbar (%2); die Datei ist als %3 aufgehoben, und an ihrer Stelle stehen die mitgelieferten.</translation>
    </message>
    <message>
        <source>The bookmarks cannot be saved: %1</source>
        <translation>Die Lesezeichen können nicht gespeichert werden: %1</translation>
    </message>
    <message>
        <source>in the built-in band</source>
        <translation>im eingebauten Band</translation>
    </message>
    <message>
        <source>time signal, Germany</source>
        <translation>Zeitzeichen, Deutschland</translation>
    </message>
    <message>
        <source>CQ in Morse code</source>
        <translation>CQ in Morsezeichen</translation>
    </message>
    <message>
        <source>Voice, lower side band</source>
        <translation>Sprache, unteres Seitenband</translation>
    </message>
    <message>
        <source>Voice, upper side band</source>
        <translation>Sprache, oberes Seitenband</translation>
    </message>
    <message>
        <source>Voice, AM</source>
        <translation>Sprache, AM</translation>
    </message>
    <message>
        <source>Voice, narrow FM</source>
        <translation>Sprache, Schmalband-FM</translation>
    </message>
    <message>
        <source>time signal, USA</source>
        <translation>Zeitzeichen, USA</translation>
    </message>
    <message>
        <source>FT8, 20 m</source>
        <translation>FT8, 20 m</translation>
    </message>
    <message>
        <source>data, worldwide by day</source>
        <translation>Daten, tagsüber weltweit</translation>
    </message>
</context>
<context>
    <name>host::BookmarkModel</name>
    <message>
        <source>%1 is too large for bookmarks</source>
        <translation>%1 ist zu groß für Lesezeichen</translation>
    </message>
</context>
<context>
    <name>host::BusView</name>
    <message>
        <source>The USB cannot be looked at (status %1 of the library): is /dev/bus/usb there?</source>
        <translation>Der USB lässt sich nicht durchsehen (Status %1 der Bibliothek): gibt es /dev/bus/usb?</translation>
    </message>
    <message>
        <source>Of the devices with a receiver&apos;s chip on the USB none is called ZephrinNano: plug the receiver in.</source>
        <translation>Von den Geräten mit dem Chip eines Empfängers am USB heißt keines ZephrinNano: den Empfänger anstecken.</translation>
    </message>
    <message>
        <source>There is no receiver on the USB: plug it in.</source>
        <translation>Am USB ist kein Empfänger: bitte anstecken.</translation>
    </message>
    <message>
        <source>There is a device with a receiver&apos;s chip on the USB that you may not open. Plug the receiver in again; the rule %1 lets who sits at the computer use it, but nobody from afar.</source>
        <translation>Am USB ist ein Gerät mit dem Chip eines Empfängers, das nicht geöffnet werden darf. Den Empfänger neu anstecken; die Regel %1 lässt ihn benutzen, wer am Rechner sitzt, aber niemanden aus der Ferne.</translation>
    </message>
    <message>
        <source>There is a device with a receiver&apos;s chip on the USB that you may not open: as root, copy %1 to /etc/udev/rules.d and run &quot;udevadm control --reload&quot;; then plug the receiver in again.</source>
        <translation>Am USB ist ein Gerät mit dem Chip eines Empfängers, das nicht geöffnet werden darf: als root %1 nach /etc/udev/rules.d kopieren und „udevadm control --reload“ ausführen; dann den Empfänger neu anstecken.</translation>
    </message>
</context>
<context>
    <name>host::ControlPanel</name>
    <message>
        <source>The control panel is there.</source>
        <translation>Das Bedienpult ist da.</translation>
    </message>
    <message>
        <source>The control panel is gone.</source>
        <translation>Das Bedienpult ist weg.</translation>
    </message>
    <message>
        <source>Control panel: %1</source>
        <translation>Bedienpult: %1</translation>
    </message>
</context>
<context>
    <name>host::DeviceKind</name>
    <message>
        <source>&amp;Virtual receiver</source>
        <translation>&amp;Virtueller Empfänger</translation>
    </message>
    <message>
        <source>Receiver on the &amp;USB</source>
        <translation>Empfänger am &amp;USB</translation>
    </message>
</context>
<context>
    <name>host::DeviceNotice</name>
    <message>
        <source>No receiver</source>
        <translation>Kein Empfänger</translation>
    </message>
    <message>
        <source>Listen to the virtual receiver</source>
        <translation>Den virtuellen Empfänger hören</translation>
    </message>
</context>
<context>
    <name>host::DialSlider</name>
    <message>
        <source>silent</source>
        <translation>still</translation>
    </message>
    <message>
        <source>Double click, or Backspace: back to the standard</source>
        <translation>Doppelklick oder Rücktaste: zurück zum üblichen Wert</translation>
    </message>
    <message>
        <source> (no effect in this mode)</source>
        <translation> (in dieser Betriebsart ohne Wirkung)</translation>
    </message>
</context>
<context>
    <name>host::DiskRefusal</name>
    <message>
        <source>the file was taken away</source>
        <translation>die Datei wurde weggenommen</translation>
    </message>
    <message>
        <source>the disk did not take all of it</source>
        <translation>der Datenträger hat nicht alles angenommen</translation>
    </message>
</context>
<context>
    <name>host::EqualizerCurve</name>
    <message>
        <source>%1k</source>
        <translation>%1k</translation>
    </message>
</context>
<context>
    <name>host::EqualizerDialog</name>
    <message>
        <source>%1k</source>
        <translation>%1k</translation>
    </message>
    <message>
        <source>Gain at %1 Hz, dB</source>
        <translation>Verstärkung bei %1 Hz in dB</translation>
    </message>
    <message>
        <source>Equalizer</source>
        <translation>Equalizer</translation>
    </message>
    <message>
        <source>&amp;Flat</source>
        <translation>&amp;Linear</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
</context>
<context>
    <name>host::FrequencyDisplay</name>
    <message>
        <source>Frequency of VFO A</source>
        <translation>Frequenz von VFO A</translation>
    </message>
    <message>
        <source>Frequency of VFO B</source>
        <translation>Frequenz von VFO B</translation>
    </message>
    <message>
        <source>Wheel or click on a digit, or type one. F types a whole frequency.</source>
        <translation>Rad oder Klick auf eine Ziffer, oder eine tippen. Mit F eine ganze Frequenz eingeben.</translation>
    </message>
    <message>
        <source>Type a frequency, for example 14.074 or 14074k</source>
        <translation>Frequenz eingeben, zum Beispiel 14,074 oder 14074k</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is no frequency; for example 14.074 or 14074k</source>
        <translation>„%1“ ist keine Frequenz; zum Beispiel 14,074 oder 14074k</translation>
    </message>
</context>
<context>
    <name>host::HealthBar</name>
    <message>
        <source>Level at the receiver&apos;s converter; OVERFLOW: attenuate</source>
        <translation>Pegel am Wandler des Empfängers; ÜBERSTEUERT: abschwächen</translation>
    </message>
    <message>
        <source>Peak of the audio</source>
        <translation>Spitzenpegel des Tons</translation>
    </message>
    <message>
        <source>Wide FM with a pilot tone</source>
        <translation>UKW-Rundfunk mit Stereo-Pilotton</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>Looking for a receiver</source>
        <translation>Sucht einen Empfänger</translation>
    </message>
    <message>
        <source>%1, %2 kHz</source>
        <translation>%1, %2 kHz</translation>
    </message>
    <message>
        <source>ADC OVERFLOW</source>
        <translation>ADC ÜBERSTEUERT</translation>
    </message>
    <message>
        <source>ADC %1 dBFS</source>
        <translation>ADC %1 dBFS</translation>
    </message>
    <message>
        <source>audio %1 dBFS</source>
        <translation>Ton %1 dBFS</translation>
    </message>
    <message>
        <source>● stereo</source>
        <translation>● Stereo</translation>
    </message>
    <message>
        <source>program %1</source>
        <translation>Progr. %1</translation>
    </message>
    <message>
        <source>receiver %1</source>
        <translation>Empf. %1</translation>
    </message>
    <message>
        <source>LOST: %1</source>
        <translation>VERLOREN: %1</translation>
    </message>
    <message>
        <source>, </source>
        <translation>, </translation>
    </message>
    <message>
        <source>nothing lost</source>
        <translation>nichts verloren</translation>
    </message>
    <message>
        <source>IQ since the start: %1 samples lost as the program had no time for them, %2 that the receiver sent in vain, with %3 reads that came back short. The sound has gaps where some were lost.</source>
        <translation>IQ seit dem Start: %1 Abtastwerte verloren, für die das Programm keine Zeit hatte, %2, die der Empfänger vergeblich gesendet hat, bei %3 zu kurzen Lesezugriffen. Wo welche fehlen, hat der Ton Lücken.</translation>
    </message>
</context>
<context>
    <name>host::MainWindow</name>
    <message>
        <source>Velmora receiver</source>
        <translation>Velmora-Empfänger</translation>
    </message>
    <message>
        <source>Receiver on</source>
        <translation>Empfänger ein</translation>
    </message>
    <message>
        <source>Starts and stops the receiver</source>
        <translation>Startet und stoppt den Empfänger</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Meldungen</translation>
    </message>
    <message>
        <source>&lt;b&gt;This is a band built into the program.&lt;/b&gt; Each peak in the picture is a station; the yellow mark is where you listen. Click on another peak or turn the wheel to tune, choose its mode to the right. Real recordings open with File, Open.</source>
        <translation>&lt;b&gt;Dieses Band ist in das Programm eingebaut.&lt;/b&gt; Jede Spitze im Bild ist eine Station; an der gelben Marke wird gehört. Ein Klick auf eine andere Spitze oder das Mausrad stimmt ab, die Betriebsart wird rechts gewählt. Eigene Aufnahmen öffnet man mit Datei, Öffnen.</translation>
    </message>
    <message>
        <source>Understood</source>
        <translation>Verstanden</translation>
    </message>
    <message>
        <source>…</source>
        <translation>…</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Ein</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>Aus</translation>
    </message>
    <message>
        <source>sound: %1</source>
        <translation>Ton: %1</translation>
    </message>
    <message>
        <source>The built-in band</source>
        <translation>Das eingebaute Band</translation>
    </message>
    <message>
        <source>Playing %1</source>
        <translation>Es läuft %1</translation>
    </message>
    <message>
        <source>Open a recording or a band</source>
        <translation>Aufnahme oder Band öffnen</translation>
    </message>
    <message>
        <source>Recordings and bands (*.wav *.band *.f64 *.f32 *.s16 *.u8 *.cf32 *.cu8 *.flac);;All files (*)</source>
        <translation>Aufnahmen und Bänder (*.wav *.band *.f64 *.f32 *.s16 *.u8 *.cf32 *.cu8 *.flac);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Remote control by rigctld&apos;s protocol on localhost:%1</source>
        <translation>Fernsteuerung nach dem Protokoll von rigctld auf localhost:%1</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Open recording or band…</source>
        <translation>Aufnahme oder Band ö&amp;ffnen…</translation>
    </message>
    <message>
        <source>&amp;Built-in band</source>
        <translation>&amp;Eingebautes Band</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Receiver</source>
        <translation>&amp;Empfänger</translation>
    </message>
    <message>
        <source>&amp;On or off</source>
        <translation>&amp;Ein oder aus</translation>
    </message>
    <message>
        <source>&amp;Band width</source>
        <translation>&amp;Bandbreite</translation>
    </message>
    <message>
        <source>%1 kHz</source>
        <translation>%1 kHz</translation>
    </message>
    <message>
        <source>O&amp;ptions of the device…</source>
        <translation>E&amp;instellungen des Geräts…</translation>
    </message>
    <message>
        <source>&amp;Device</source>
        <translation>&amp;Gerät</translation>
    </message>
    <message>
        <source>&amp;Sound card</source>
        <translation>&amp;Soundkarte</translation>
    </message>
    <message>
        <source>&amp;Equalizer…</source>
        <translation>E&amp;qualizer…</translation>
    </message>
    <message>
        <source>&amp;Notch filters…</source>
        <translation>&amp;Notchfilter…</translation>
    </message>
    <message>
        <source>&amp;Tuning</source>
        <translation>&amp;Abstimmung</translation>
    </message>
    <message>
        <source>&amp;Type a frequency</source>
        <translation>Frequenz &amp;eingeben</translation>
    </message>
    <message>
        <source>Step &amp;up</source>
        <translation>Schritt a&amp;ufwärts</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>Schritt a&amp;bwärts</translation>
    </message>
    <message>
        <source>The other &amp;VFO</source>
        <translation>Der andere &amp;VFO</translation>
    </message>
    <message>
        <source>&amp;Copy to the other VFO</source>
        <translation>In den anderen VFO k&amp;opieren</translation>
    </message>
    <message>
        <source>&amp;Split listening</source>
        <translation>&amp;Split: beide hören</translation>
    </message>
    <message>
        <source>&amp;Lock</source>
        <translation>S&amp;perren</translation>
    </message>
    <message>
        <source>&amp;RIT</source>
        <translation>&amp;RIT</translation>
    </message>
    <message>
        <source>&amp;Bookmarks…</source>
        <translation>Lese&amp;zeichen…</translation>
    </message>
    <message>
        <source>&amp;Wider filter</source>
        <translation>Breiteres &amp;Filter</translation>
    </message>
    <message>
        <source>&amp;Narrower filter</source>
        <translation>Sc&amp;hmaleres Filter</translation>
    </message>
    <message>
        <source>S&amp;quelch</source>
        <translation>Raus&amp;chsperre</translation>
    </message>
    <message>
        <source>&amp;Mute</source>
        <translation>Stu&amp;mm</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>An&amp;sicht</translation>
    </message>
    <message>
        <source>Zoom &amp;in</source>
        <translation>Ver&amp;größern</translation>
    </message>
    <message>
        <source>Zoom &amp;out</source>
        <translation>Ver&amp;kleinern</translation>
    </message>
    <message>
        <source>&amp;Whole band</source>
        <translation>Ganzes &amp;Band</translation>
    </message>
    <message>
        <source>&amp;Automatic level range</source>
        <translation>&amp;Automatischer Pegelbereich</translation>
    </message>
    <message>
        <source>&amp;Peak hold</source>
        <translation>&amp;Spitzenwerte halten</translation>
    </message>
    <message>
        <source>A&amp;veraging</source>
        <translation>&amp;Mittelung</translation>
    </message>
    <message>
        <source>none</source>
        <translation>keine</translation>
    </message>
    <message numerus="yes">
        <source>%n lines</source>
        <translation>
            <numerusform>%n Zeile</numerusform>
            <numerusform>%n Zeilen</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Lines a second</source>
        <translation>&amp;Zeilen je Sekunde</translation>
    </message>
    <message>
        <source>&amp;Colours of the waterfall</source>
        <translation>&amp;Farben des Wasserfalls</translation>
    </message>
    <message>
        <source>&amp;Fire</source>
        <translation>&amp;Feuer</translation>
    </message>
    <message>
        <source>&amp;Sea</source>
        <translation>&amp;Meer</translation>
    </message>
    <message>
        <source>&amp;Grey</source>
        <translation>&amp;Grau</translation>
    </message>
    <message>
        <source>As the &amp;desktop</source>
        <translation>Wie der &amp;Desktop</translation>
    </message>
    <message>
        <source>D&amp;ark</source>
        <translation>D&amp;unkel</translation>
    </message>
    <message>
        <source>&amp;Light</source>
        <translation>&amp;Hell</translation>
    </message>
    <message>
        <source>&amp;Size of everything</source>
        <translation>G&amp;röße von allem</translation>
    </message>
    <message>
        <source>as the desktop</source>
        <translation>wie der Desktop</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>The size changes at the next start of the program.</source>
        <translation>Die Größe ändert sich beim nächsten Start des Programms.</translation>
    </message>
    <message>
        <source>Lan&amp;guage</source>
        <translation>S&amp;prache</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;Keys and mouse</source>
        <translation>&amp;Tasten und Maus</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber dieses Programm</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über dieses Programm</translation>
    </message>
    <message>
        <source>&lt;b&gt;%1 %2&lt;/b&gt;&lt;p&gt;A receiver for %3.&lt;/p&gt;&lt;p&gt;GPL-3.0-or-later&lt;/p&gt;</source>
        <translation>&lt;b&gt;%1 %2&lt;/b&gt;&lt;p&gt;Ein Empfänger für %3.&lt;/p&gt;&lt;p&gt;GPL-3.0-or-later&lt;/p&gt;</translation>
    </message>
    <message>
        <source>Panorama: tune by the step, by ten steps</source>
        <translation>Panorama: um einen Schritt abstimmen, um zehn</translation>
    </message>
    <message>
        <source>Wheel or ←→, with Shift</source>
        <translation>Rad oder ←→, mit Umschalt</translation>
    </message>
    <message>
        <source>Panorama: zoom about the pointer</source>
        <translation>Panorama: um den Mauszeiger zoomen</translation>
    </message>
    <message>
        <source>Ctrl+Wheel, + and -</source>
        <translation>Strg+Rad, + und -</translation>
    </message>
    <message>
        <source>Panorama: tune here, to the very place</source>
        <translation>Panorama: hierhin abstimmen, ganz genau</translation>
    </message>
    <message>
        <source>Click, with Shift</source>
        <translation>Klick, mit Umschalt</translation>
    </message>
    <message>
        <source>Panorama: move the view, an edge, a VFO, a notch</source>
        <translation>Panorama: Ausschnitt, Filterkante, VFO oder Notch verschieben</translation>
    </message>
    <message>
        <source>Drag</source>
        <translation>Ziehen</translation>
    </message>
    <message>
        <source>Panorama: set a notch, take it out</source>
        <translation>Panorama: Notch setzen, entfernen</translation>
    </message>
    <message>
        <source>Right click, Ins and Del</source>
        <translation>Rechtsklick, Einfg und Entf</translation>
    </message>
    <message>
        <source>Panorama: move and widen the level range</source>
        <translation>Panorama: Pegelbereich verschieben und weiten</translation>
    </message>
    <message>
        <source>Drag and wheel on the numbers</source>
        <translation>Ziehen und Rad auf den Zahlen</translation>
    </message>
    <message>
        <source>Panorama: automatic range, whole band</source>
        <translation>Panorama: automatischer Bereich, ganzes Band</translation>
    </message>
    <message>
        <source>Double click on the numbers, Home</source>
        <translation>Doppelklick auf die Zahlen, Pos1</translation>
    </message>
    <message>
        <source>Frequency: choose a digit, count, write</source>
        <translation>Frequenz: Ziffer wählen, zählen, schreiben</translation>
    </message>
    <message>
        <source>←→, ↑↓ or wheel, 0 to 9</source>
        <translation>←→, ↑↓ oder Rad, 0 bis 9</translation>
    </message>
    <message>
        <source>Keys and mouse</source>
        <translation>Tasten und Maus</translation>
    </message>
    <message>
        <source>What</source>
        <translation>Was</translation>
    </message>
    <message>
        <source>How</source>
        <translation>Wie</translation>
    </message>
    <message>
        <source>Lar&amp;ger step</source>
        <translation>&amp;Größerer Schritt</translation>
    </message>
    <message>
        <source>Smaller st&amp;ep</source>
        <translation>&amp;Kleinerer Schritt</translation>
    </message>
    <message>
        <source>Sw&amp;ap A and B</source>
        <translation>A und B &amp;tauschen</translation>
    </message>
    <message>
        <source>Ne&amp;xt amateur band</source>
        <translation>&amp;Nächstes Amateurband</translation>
    </message>
    <message>
        <source>&amp;Previous amateur band</source>
        <translation>Voriges &amp;Amateurband</translation>
    </message>
    <message>
        <source>L&amp;ouder</source>
        <translation>&amp;Lauter</translation>
    </message>
    <message>
        <source>Qu&amp;ieter</source>
        <translation>Le&amp;iser</translation>
    </message>
    <message>
        <source>Win&amp;dow colours</source>
        <translation>Farben des F&amp;ensters</translation>
    </message>
    <message>
        <source>Larger pa&amp;norama</source>
        <translation>Größeres Pa&amp;norama</translation>
    </message>
    <message>
        <source>Larger wa&amp;terfall</source>
        <translation>Größerer &amp;Wasserfall</translation>
    </message>
    <message>
        <source>Panorama: move the level range, widen it</source>
        <translation>Panorama: Pegelbereich verschieben, weiten</translation>
    </message>
    <message>
        <source>↑↓, with Shift</source>
        <translation>↑↓, mit Umschalt</translation>
    </message>
    <message>
        <source>Remote &amp;control…</source>
        <translation>&amp;Fernsteuerung…</translation>
    </message>
    <message>
        <source>&amp;Keys and knobs…</source>
        <translation>&amp;Tasten und Knöpfe…</translation>
    </message>
    <message>
        <source>Receiver, &amp;rate and preamplifier</source>
        <translation>Empfänger, Abtast&amp;rate und Vorverstärker</translation>
    </message>
</context>
<context>
    <name>host::ModePanel</name>
    <message>
        <source>Lower edge of the filter</source>
        <translation>Untere Grenze des Filters</translation>
    </message>
    <message>
        <source>Upper edge of the filter</source>
        <translation>Obere Grenze des Filters</translation>
    </message>
    <message>
        <source>Add and remove filters</source>
        <translation>Filter hinzufügen und entfernen</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>&amp;Add these edges</source>
        <translation>Diese Grenzen &amp;hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove this filter</source>
        <translation>Dieses Filter &amp;entfernen</translation>
    </message>
    <message>
        <source>&amp;Standard filters of the mode</source>
        <translation>&amp;Übliche Filter der Betriebsart</translation>
    </message>
    <message>
        <source>%1 to %2 Hz</source>
        <translation>%1 bis %2 Hz</translation>
    </message>
</context>
<context>
    <name>host::NotchDialog</name>
    <message>
        <source>Notch filters</source>
        <translation>Notchfilter</translation>
    </message>
    <message>
        <source>&amp;Notch filters of this band are on</source>
        <translation>&amp;Notchfilter dieses Bandes sind ein</translation>
    </message>
    <message>
        <source>On</source>
        <translation>Ein</translation>
    </message>
    <message>
        <source>Frequency</source>
        <translation>Frequenz</translation>
    </message>
    <message>
        <source>Width, Hz</source>
        <translation>Breite, Hz</translation>
    </message>
    <message>
        <source>Notch filters of this band</source>
        <translation>Notchfilter dieses Bandes</translation>
    </message>
    <message>
        <source>&amp;Add at the VFO</source>
        <translation>Am VFO &amp;hinzufügen</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>&amp;Entfernen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
</context>
<context>
    <name>host::OptionsDialog</name>
    <message>
        <source>Options of %1</source>
        <translation>Einstellungen von %1</translation>
    </message>
</context>
<context>
    <name>host::PanelDialog</name>
    <message>
        <source>Keys and knobs</source>
        <translation>Tasten und Knöpfe</translation>
    </message>
    <message>
        <source>Key or knob</source>
        <translation>Taste oder Knopf</translation>
    </message>
    <message>
        <source>Action</source>
        <translation>Aktion</translation>
    </message>
    <message>
        <source>With</source>
        <translation>Mit</translation>
    </message>
    <message>
        <source>What it does</source>
        <translation>Was sie tut</translation>
    </message>
    <message>
        <source>for the receiver &amp;only</source>
        <translation>&amp;nur für den Empfänger</translation>
    </message>
    <message>
        <source>Its keys and knobs go to no other program</source>
        <translation>Seine Tasten und Knöpfe gehen an kein anderes Programm</translation>
    </message>
    <message>
        <source>none; a part of its name, or its file</source>
        <translation>keins; ein Teil seines Namens oder seine Datei</translation>
    </message>
    <message>
        <source>&amp;Input device</source>
        <translation>&amp;Eingabegerät</translation>
    </message>
    <message>
        <source>&amp;Add…</source>
        <translation>&amp;Hinzufügen…</translation>
    </message>
    <message>
        <source>C&amp;hange…</source>
        <translation>&amp;Ändern…</translation>
    </message>
    <message>
        <source>&amp;Remove</source>
        <translation>Ent&amp;fernen</translation>
    </message>
    <message>
        <source>&amp;Close</source>
        <translation>&amp;Schließen</translation>
    </message>
    <message>
        <source>left out: %1</source>
        <translation>ausgelassen: %1</translation>
    </message>
    <message>
        <source>The device is there.</source>
        <translation>Das Gerät ist da.</translation>
    </message>
    <message>
        <source>The device is not there; it is waited for.</source>
        <translation>Das Gerät ist nicht da; es wird darauf gewartet.</translation>
    </message>
    <message>
        <source>No input device can be read; on Debian that needs the group &quot;input&quot;.</source>
        <translation>Kein Eingabegerät ist lesbar; unter Debian braucht es dazu die Gruppe „input“.</translation>
    </message>
    <message>
        <source>No device is chosen.</source>
        <translation>Kein Gerät ist gewählt.</translation>
    </message>
    <message>
        <source>%1 is that of &quot;%2&quot; in the menu</source>
        <translation>%1 gehört schon zu „%2“ im Menü</translation>
    </message>
</context>
<context>
    <name>host::PanelInput</name>
    <message>
        <source>The control panel %1 cannot be read: %2</source>
        <translation>Das Bedienpult %1 kann nicht gelesen werden: %2</translation>
    </message>
</context>
<context>
    <name>host::PanelRowDialog</name>
    <message>
        <source>Key or knob</source>
        <translation>Taste oder Knopf</translation>
    </message>
    <message>
        <source>Press the key or turn the knob on the panel, or choose by hand.</source>
        <translation>Am Bedienpult die Taste drücken oder den Knopf drehen, oder von Hand wählen.</translation>
    </message>
    <message>
        <source>Shortcuts of the window work now; keys and knobs of a panel when it is there.</source>
        <translation>Tastenkürzel des Fensters gelten sofort; Tasten und Knöpfe eines Bedienpults, sobald es da ist.</translation>
    </message>
    <message>
        <source>Key of the panel</source>
        <translation>Taste des Bedienpults</translation>
    </message>
    <message>
        <source>Knob of the panel</source>
        <translation>Knopf des Bedienpults</translation>
    </message>
    <message>
        <source>Shortcut of the window</source>
        <translation>Tastenkürzel des Fensters</translation>
    </message>
    <message>
        <source>Two shortcuts as a knob</source>
        <translation>Zwei Tastenkürzel als Knopf</translation>
    </message>
    <message>
        <source>its name in Linux, as KEY_MUTE</source>
        <translation>ihr Name in Linux, etwa KEY_MUTE</translation>
    </message>
    <message>
        <source>Name of the key or knob</source>
        <translation>Name der Taste oder des Knopfs</translation>
    </message>
    <message>
        <source>Shortcut, up</source>
        <translation>Tastenkürzel, auf</translation>
    </message>
    <message>
        <source>Shortcut, down</source>
        <translation>Tastenkürzel, ab</translation>
    </message>
    <message>
        <source>&amp;What</source>
        <translation>&amp;Was</translation>
    </message>
    <message>
        <source>&amp;Key or knob</source>
        <translation>&amp;Taste oder Knopf</translation>
    </message>
    <message>
        <source>&amp;Does</source>
        <translation>T&amp;ut</translation>
    </message>
    <message>
        <source>&amp;Speed</source>
        <translation>&amp;Geschwindigkeit</translation>
    </message>
    <message>
        <source>W&amp;ith</source>
        <translation>&amp;Mit</translation>
    </message>
    <message>
        <source>adaptive: one step a click turned slowly, many turned fast. fixed: so many steps a click, below 0 the other way round.</source>
        <translation>adaptive: langsam gedreht ein Schritt je Raste, schnell gedreht viele. fixed: so viele Schritte je Raste, unter 0 anders herum.</translation>
    </message>
</context>
<context>
    <name>host::PanoramaView</name>
    <message>
        <source>Panorama</source>
        <translation>Panorama</translation>
    </message>
    <message>
        <source>Level over frequency. Arrow keys tune, plus and minus zoom.</source>
        <translation>Pegel über der Frequenz. Pfeiltasten stimmen ab, Plus und Minus zoomen.</translation>
    </message>
    <message>
        <source>auto</source>
        <translation>auto</translation>
    </message>
    <message>
        <source>dBFS</source>
        <translation>dBFS</translation>
    </message>
    <message>
        <source>%1 amateur band</source>
        <translation>%1-Amateurband</translation>
    </message>
    <message>
        <source>%1 MHz  %2 dB</source>
        <translation>%1 MHz  %2 dB</translation>
    </message>
</context>
<context>
    <name>host::PlayBar</name>
    <message>
        <source>Pause</source>
        <translation>Pause</translation>
    </message>
    <message>
        <source>Loop</source>
        <translation>Schleife</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Ends the recording</source>
        <translation>Beendet die Wiedergabe</translation>
    </message>
    <message>
        <source>Position in the recording</source>
        <translation>Stelle in der Aufnahme</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
<context>
    <name>host::Radio</name>
    <message>
        <source>The receiver does not start its stream; trying again.</source>
        <translation>Der Empfänger liefert keinen Datenstrom; neuer Versuch.</translation>
    </message>
    <message>
        <source>Playing %1, %2 s</source>
        <translation>Es läuft %1, %2 s</translation>
    </message>
    <message>
        <source>The receiver is gone; waiting for one.</source>
        <translation>Der Empfänger ist weg; es wird auf einen gewartet.</translation>
    </message>
    <message>
        <source>The virtual receiver is unplugged.</source>
        <translation>Der virtuelle Empfänger ist abgezogen.</translation>
    </message>
    <message>
        <source>Another program may have it.</source>
        <translation>Vielleicht hat ihn ein anderes Programm.</translation>
    </message>
</context>
<context>
    <name>host::RadioPanel</name>
    <message>
        <source>The receiver has no band &apos;%1&apos;.</source>
        <translation>Der Empfänger hat kein Band „%1“.</translation>
    </message>
</context>
<context>
    <name>host::RecordBar</name>
    <message>
        <source>● Audio</source>
        <translation>● Ton</translation>
    </message>
    <message>
        <source>Record what is heard</source>
        <translation>Aufnehmen, was zu hören ist</translation>
    </message>
    <message>
        <source>● IQ</source>
        <translation>● IQ</translation>
    </message>
    <message>
        <source>Record the whole received band</source>
        <translation>Das ganze empfangene Band aufnehmen</translation>
    </message>
    <message>
        <source>Recording</source>
        <translation>Aufnahme</translation>
    </message>
    <message>
        <source>Recorded %1</source>
        <translation>Aufgenommen: %1</translation>
    </message>
    <message>
        <source>Recording into %1</source>
        <translation>Aufnahme nach %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>, %1 free</source>
        <translation>, %1 frei</translation>
    </message>
    <message numerus="yes">
        <source>, %n files</source>
        <translation>
            <numerusform>, %n Datei</numerusform>
            <numerusform>, %n Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>, %n samples LOST</source>
        <translation>
            <numerusform>, %n Abtastwert VERLOREN</numerusform>
            <numerusform>, %n Abtastwerte VERLOREN</numerusform>
        </translation>
    </message>
    <message>
        <source>&amp;Audio files</source>
        <translation>&amp;Tondateien</translation>
    </message>
    <message>
        <source>&amp;WAV, 32-bit float</source>
        <translation>&amp;WAV, 32 Bit Gleitkomma</translation>
    </message>
    <message>
        <source>&amp;FLAC, 24 bits</source>
        <translation>&amp;FLAC, 24 Bit</translation>
    </message>
    <message>
        <source>&amp;IQ files</source>
        <translation>&amp;IQ-Dateien</translation>
    </message>
    <message>
        <source>&amp;1: with a header of its own</source>
        <translation>&amp;1: mit eigenem Kopf</translation>
    </message>
    <message>
        <source>&amp;2: plain WAV, 40 dB louder, for weak bands</source>
        <translation>&amp;2: gewöhnliches WAV, 40 dB lauter, für schwache Bänder</translation>
    </message>
    <message>
        <source>&amp;3: WAV with auxi header, 30 dB louder, for weak bands</source>
        <translation>&amp;3: WAV mit auxi-Kopf, 30 dB lauter, für schwache Bänder</translation>
    </message>
    <message>
        <source>&amp;Folder of recordings…</source>
        <translation>O&amp;rdner der Aufnahmen…</translation>
    </message>
    <message>
        <source>Folder of recordings</source>
        <translation>Ordner der Aufnahmen</translation>
    </message>
</context>
<context>
    <name>host::Recorder</name>
    <message>
        <source>the file has been taken away</source>
        <translation>die Datei wurde entfernt</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
</context>
<context>
    <name>host::RecordingPlayer</name>
    <message>
        <source>IQ is played by the virtual receiver, which is not in use</source>
        <translation>IQ spielt der virtuelle Empfänger ab, und der ist nicht in Gebrauch</translation>
    </message>
</context>
<context>
    <name>host::RemoteDialog</name>
    <message>
        <source>Remote control</source>
        <translation>Fernsteuerung</translation>
    </message>
    <message>
        <source>&amp;Other programs on this computer may tune the receiver</source>
        <translation>&amp;Andere Programme auf diesem Rechner dürfen den Empfänger abstimmen</translation>
    </message>
    <message>
        <source>&amp;Port</source>
        <translation>&amp;Port</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>In the other program choose &quot;Hamlib NET rigctl&quot; (model 2) and localhost with this port.</source>
        <translation>Im anderen Programm „Hamlib NET rigctl“ (Modell 2) und localhost mit diesem Port wählen.</translation>
    </message>
    <message>
        <source>Listening on localhost:%1, %2 of %3 programs connected.</source>
        <translation>Lauscht auf localhost:%1, %2 von %3 Programmen sind verbunden.</translation>
    </message>
    <message>
        <source>Off.</source>
        <translation>Aus.</translation>
    </message>
</context>
<context>
    <name>host::RigServer</name>
    <message>
        <source>Rig control cannot use port %1: %2</source>
        <translation>Die Fernsteuerung kann Port %1 nicht benutzen: %2</translation>
    </message>
</context>
<context>
    <name>host::SMeter</name>
    <message>
        <source>Signal strength</source>
        <translation>Signalstärke</translation>
    </message>
    <message>
        <source>%1, %2 dBm</source>
        <translation>%1, %2 dBm</translation>
    </message>
    <message>
        <source>%1 dBm</source>
        <translation>%1 dBm</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
</context>
<context>
    <name>host::ShortcutField</name>
    <message>
        <source>press it</source>
        <translation>hier drücken</translation>
    </message>
</context>
<context>
    <name>host::SoundCard</name>
    <message>
        <source>there is no sound device</source>
        <translation>kein Tonausgabegerät</translation>
    </message>
    <message>
        <source>the sound device %1 is not there</source>
        <translation>das Tonausgabegerät %1 ist nicht da</translation>
    </message>
    <message>
        <source>the sound device %1 takes no audio of a known kind</source>
        <translation>das Tonausgabegerät %1 nimmt keinen Ton bekannter Art an</translation>
    </message>
    <message>
        <source>the sound device %1 cannot be opened; if it is there, begin the program anew</source>
        <translation>das Tonausgabegerät %1 kann nicht geöffnet werden; ist es da, das Programm neu starten</translation>
    </message>
    <message>
        <source>the sound device has gone</source>
        <translation>das Tonausgabegerät ist weg</translation>
    </message>
    <message>
        <source>the sound device has stopped</source>
        <translation>das Tonausgabegerät steht still</translation>
    </message>
</context>
<context>
    <name>host::SoundChoice</name>
    <message>
        <source>&amp;Virtual cable</source>
        <translation>&amp;Virtuelles Kabel</translation>
    </message>
    <message>
        <source>&amp;Line output</source>
        <translation>&amp;Line-Ausgang</translation>
    </message>
    <message>
        <source>&amp;As the system prefers</source>
        <translation>&amp;Wie das System es vorzieht</translation>
    </message>
    <message>
        <source>&amp;Off</source>
        <translation>&amp;Aus</translation>
    </message>
</context>
<context>
    <name>host::SoundOutput</name>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
</context>
<context>
    <name>host::SwitchButton</name>
    <message>
        <source> (no effect in this mode)</source>
        <translation> (in dieser Betriebsart ohne Wirkung)</translation>
    </message>
</context>
<context>
    <name>host::ToolPanel</name>
    <message>
        <source>Sound</source>
        <translation>Ton</translation>
    </message>
    <message>
        <source>Gain</source>
        <translation>Verstärkung</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message>
        <source>EQ…</source>
        <translation>EQ…</translation>
    </message>
    <message>
        <source>Sliders of the equalizer</source>
        <translation>Regler des Equalizers</translation>
    </message>
    <message>
        <source>Notches…</source>
        <translation>Notchfilter…</translation>
    </message>
    <message>
        <source>List of notch filters</source>
        <translation>Liste der Notchfilter</translation>
    </message>
    <message>
        <source>Squelch</source>
        <translation>Rauschsperre</translation>
    </message>
    <message>
        <source>Squelch tone</source>
        <translation>Pilotton der Rauschsperre</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>Step</source>
        <translation>Schritt</translation>
    </message>
</context>
<context>
    <name>host::VfoPanel</name>
    <message>
        <source>%1 MHz</source>
        <translation>%1 MHz</translation>
    </message>
    <message>
        <source>%1 kHz</source>
        <translation>%1 kHz</translation>
    </message>
    <message>
        <source>%1 Hz</source>
        <translation>%1 Hz</translation>
    </message>
    <message>
        <source>A⇄B</source>
        <translation>A⇄B</translation>
    </message>
    <message>
        <source>Frequency and mode of A and B change places</source>
        <translation>Frequenz und Betriebsart von A und B tauschen die Plätze</translation>
    </message>
    <message>
        <source>A=B</source>
        <translation>A=B</translation>
    </message>
    <message>
        <source>The other VFO becomes as the active one</source>
        <translation>Der andere VFO wird wie der aktive</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Split</translation>
    </message>
    <message>
        <source>Hear both VFOs</source>
        <translation>Beide VFOs hören</translation>
    </message>
    <message>
        <source>Lock</source>
        <translation>Sperre</translation>
    </message>
    <message>
        <source>Frequencies stay as they are</source>
        <translation>Die Frequenzen bleiben, wie sie sind</translation>
    </message>
    <message>
        <source>Tuning step</source>
        <translation>Abstimmschritt</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>RIT offset</source>
        <translation>RIT-Ablage</translation>
    </message>
</context>
<context>
    <name>host::WaterfallView</name>
    <message>
        <source>Waterfall</source>
        <translation>Wasserfall</translation>
    </message>
    <message>
        <source>Spectra over time, the newest on top. Arrow keys tune.</source>
        <translation>Spektren über der Zeit, das neueste oben. Pfeiltasten stimmen ab.</translation>
    </message>
</context>
</TS>
