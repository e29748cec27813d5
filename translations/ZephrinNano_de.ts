<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>ControlM</name>
    <message>
        <source>connected</source>
        <translation>verbunden</translation>
    </message>
    <message>
        <source>disconnected</source>
        <translation>nicht verbunden</translation>
    </message>
</context>
<context>
    <name>DeviceMenuZephrinNano</name>
    <message>
        <source>ZephrinNANO:</source>
        <translation>ZephrinNANO:</translation>
    </message>
    <message>
        <source>The receiver to use, by its serial number. It can be changed while no receiver is open.</source>
        <translation>Der Empfänger, nach seiner Seriennummer. Er ist wählbar, solange keiner geöffnet ist.</translation>
    </message>
    <message>
        <source>Sample rate:</source>
        <translation>Abtastrate:</translation>
    </message>
    <message>
        <source>Samples per second of the stream, which is the width of the panorama.</source>
        <translation>Abtastwerte je Sekunde; so breit ist das Panorama.</translation>
    </message>
    <message>
        <source>48 kHz</source>
        <translation>48 kHz</translation>
    </message>
    <message>
        <source>96 kHz</source>
        <translation>96 kHz</translation>
    </message>
    <message>
        <source>192 kHz</source>
        <translation>192 kHz</translation>
    </message>
    <message>
        <source>384 kHz</source>
        <translation>384 kHz</translation>
    </message>
    <message>
        <source>768 kHz</source>
        <translation>768 kHz</translation>
    </message>
    <message>
        <source>1.5 MHz</source>
        <translation>1,5 MHz</translation>
    </message>
    <message>
        <source>1.9 MHz</source>
        <translation>1,9 MHz</translation>
    </message>
    <message>
        <source>2.5 MHz</source>
        <translation>2,5 MHz</translation>
    </message>
    <message>
        <source>3.0 MHz</source>
        <translation>3,0 MHz</translation>
    </message>
    <message>
        <source>Auto preamp:</source>
        <translation>Auto-Vorverstärker:</translation>
    </message>
    <message>
        <source>Turns the gain down when the converter is driven over, and up again after a quiet time.</source>
        <translation>Nimmt die Verstärkung zurück, wenn der Wandler übersteuert wird, und nach ruhiger Zeit wieder vor.</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Status:</translation>
    </message>
    <message>
        <source>Whether a receiver is plugged in.</source>
        <translation>Ob ein Empfänger angesteckt ist.</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;left&quot;&gt;disconnect&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p align=&quot;left&quot;&gt;nicht verbunden&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>No receiver is there. Plug one in:
it appears here within two seconds.</source>
        <translation>Kein Empfänger ist da. Einen anstecken:
nach zwei Sekunden erscheint er hier.</translation>
    </message>
</context>
<context>
    <name>ZephrinMInterface</name>
    <message>
        <source>Failed to open IQ file for write!</source>
        <translation>Die IQ-Datei kann nicht zum Schreiben geöffnet werden!</translation>
    </message>
</context>
<context>
    <name>ZephrinMOptions</name>
    <message>
        <source>ZephrinNANO</source>
        <translation>ZephrinNANO</translation>
    </message>
    <message>
        <source>Which receiver, how fast, how much gain</source>
        <translation>Welcher Empfänger, wie schnell, wie viel Verstärkung</translation>
    </message>
    <message>
        <source>Receiver</source>
        <translation>Empfänger</translation>
    </message>
    <message>
        <source>The receiver to use, by its serial number. It can be changed while no receiver is open.</source>
        <translation>Der Empfänger, nach seiner Seriennummer. Er ist wählbar, solange keiner geöffnet ist.</translation>
    </message>
    <message>
        <source>Samples per second of the stream, which is the width of the panorama. More needs a faster computer.</source>
        <translation>Abtastwerte je Sekunde; so breit ist das Panorama. Mehr braucht einen schnelleren Rechner.</translation>
    </message>
    <message>
        <source>48 kHz</source>
        <translation>48 kHz</translation>
    </message>
    <message>
        <source>96 kHz</source>
        <translation>96 kHz</translation>
    </message>
    <message>
        <source>192 kHz</source>
        <translation>192 kHz</translation>
    </message>
    <message>
        <source>384 kHz</source>
        <translation>384 kHz</translation>
    </message>
    <message>
        <source>768 kHz</source>
        <translation>768 kHz</translation>
    </message>
    <message>
        <source>1.5 MHz</source>
        <translation>1,5 MHz</translation>
    </message>
    <message>
        <source>1.9 MHz</source>
        <translation>1,9 MHz</translation>
    </message>
    <message>
        <source>2.5 MHz</source>
        <translation>2,5 MHz</translation>
    </message>
    <message>
        <source>3.0 MHz</source>
        <translation>3,0 MHz</translation>
    </message>
    <message>
        <source>Status:</source>
        <translation>Status:</translation>
    </message>
    <message>
        <source>Whether a receiver is plugged in.</source>
        <translation>Ob ein Empfänger angesteckt ist.</translation>
    </message>
    <message>
        <source>disconnected</source>
        <translation>nicht verbunden</translation>
    </message>
    <message>
        <source>Has no effect on this receiver, which takes its low-pass filter out by itself above 55 MHz and puts it in below.</source>
        <translation>Ohne Wirkung auf diesen Empfänger, der seinen Tiefpass über 55 MHz selbst umgeht und darunter einschaltet.</translation>
    </message>
    <message>
        <source>Preamp</source>
        <translation>Vorverstärker</translation>
    </message>
    <message>
        <source>-31.5 dB</source>
        <translation>-31,5 dB</translation>
    </message>
    <message>
        <source>Gain before the converter: to the left the attenuator, to the right the amplifier, in steps of half a decibel.</source>
        <translation>Verstärkung vor dem Wandler: links der Abschwächer, rechts der Verstärker, in Schritten von einem halben Dezibel.</translation>
    </message>
    <message>
        <source>+6 dB</source>
        <translation>+6 dB</translation>
    </message>
    <message>
        <source>Preamp: 0.0 dBm</source>
        <translation>Vorverstärker: 0.0 dBm</translation>
    </message>
    <message>
        <source>Turns the gain down when the converter is driven over, and up again after a quiet time.</source>
        <translation>Nimmt die Verstärkung zurück, wenn der Wandler übersteuert wird, und nach ruhiger Zeit wieder vor.</translation>
    </message>
    <message>
        <source>Your calibration</source>
        <translation>Eigene Kalibrierung</translation>
    </message>
    <message>
        <source>Added to the levels that are shown and heard. The receiver keeps it once the calibration is written.</source>
        <translation>Wird zu den Pegeln addiert, die man sieht und hört. Im Empfänger bleibt sie, wenn die Kalibrierung geschrieben ist.</translation>
    </message>
    <message>
        <source> dB</source>
        <translation> dB</translation>
    </message>
    <message>
        <source>The tuned frequency is multiplied by this; 1.0 leaves it as it is. A finer factor read from the receiver stays in force while it is shown rounded here.</source>
        <translation>Damit wird die Empfangsfrequenz multipliziert; 1,0 lässt sie, wie sie ist. Ein feinerer Faktor aus dem Empfänger gilt weiter, auch wenn er hier gerundet steht.</translation>
    </message>
    <message>
        <source>Noise reduction and automatic notch</source>
        <translation>Rauschminderung und automatisches Notchfilter</translation>
    </message>
    <message>
        <source>Noise reduction</source>
        <translation>Rauschminderung</translation>
    </message>
    <message>
        <source>Length of the filter. Longer tells speech and noise apart better and follows more slowly.</source>
        <translation>Länge des Filters. Ein längeres trennt Sprache und Rauschen besser und folgt langsamer.</translation>
    </message>
    <message>
        <source> taps</source>
        <translation> Koeff.</translation>
    </message>
    <message>
        <source>How far back the filter looks. Noise that lasts longer than this is taken for signal.</source>
        <translation>Wie weit das Filter zurückblickt. Rauschen, das länger anhält, gilt als Signal.</translation>
    </message>
    <message>
        <source> samples</source>
        <translation> Werte</translation>
    </message>
    <message>
        <source>How fast the filter adapts. Too fast sounds hollow.</source>
        <translation>Wie schnell sich das Filter anpasst. Zu schnell klingt hohl.</translation>
    </message>
    <message>
        <source>How fast the filter forgets what it has learnt.</source>
        <translation>Wie schnell das Filter vergisst, was es gelernt hat.</translation>
    </message>
    <message>
        <source>Puts back the values that this tool works well with.</source>
        <translation>Stellt die Werte wieder her, mit denen dieses Werkzeug gut arbeitet.</translation>
    </message>
    <message>
        <source>Defaults</source>
        <translation>Übliche Werte</translation>
    </message>
    <message>
        <source>Length of the filter. Longer tells whistles and speech apart better and follows more slowly.</source>
        <translation>Länge des Filters. Ein längeres trennt Pfeiftöne und Sprache besser und folgt langsamer.</translation>
    </message>
    <message>
        <source>How far back the filter looks. Sound that lasts longer than this is taken for a whistle and removed.</source>
        <translation>Wie weit das Filter zurückblickt. Klang, der länger anhält, gilt als Pfeifton und wird entfernt.</translation>
    </message>
    <message>
        <source>For service: converter registers and factory calibration</source>
        <translation>Für den Service: Register des Wandlers und Werkskalibrierung</translation>
    </message>
    <message>
        <source>Converter (ADC)</source>
        <translation>Wandler (ADC)</translation>
    </message>
    <message>
        <source>This receiver sets up its converter by itself and ignores what is sent from here.</source>
        <translation>Dieser Empfänger stellt seinen Wandler selbst ein und beachtet nicht, was von hier gesendet wird.</translation>
    </message>
    <message>
        <source>Low byte of the word: what goes into the register. Hexadecimal. Has no effect on this receiver.</source>
        <translation>Unteres Byte des Worts: was in das Register kommt. Hexadezimal. Ohne Wirkung auf diesen Empfänger.</translation>
    </message>
    <message>
        <source>High byte of the word: number of the register. Hexadecimal. Has no effect on this receiver.</source>
        <translation>Oberes Byte des Worts: Nummer des Registers. Hexadezimal. Ohne Wirkung auf diesen Empfänger.</translation>
    </message>
    <message>
        <source>Sends data and register number as one word. Has no effect on this receiver.</source>
        <translation>Sendet Daten und Registernummer als ein Wort. Ohne Wirkung auf diesen Empfänger.</translation>
    </message>
    <message>
        <source>Raw setting of the attenuator. Hexadecimal. Has no effect on this receiver.</source>
        <translation>Rohwert des Abschwächers. Hexadezimal. Ohne Wirkung auf diesen Empfänger.</translation>
    </message>
    <message>
        <source>Sends the raw setting of the attenuator. Has no effect on this receiver.</source>
        <translation>Sendet den Rohwert des Abschwächers. Ohne Wirkung auf diesen Empfänger.</translation>
    </message>
    <message>
        <source>Holds the converter in reset. Has no effect on this receiver.</source>
        <translation>Hält den Wandler zurückgesetzt. Ohne Wirkung auf diesen Empfänger.</translation>
    </message>
    <message>
        <source>Factory calibration</source>
        <translation>Werkskalibrierung</translation>
    </message>
    <message>
        <source>Added to the levels, together with your own correction.</source>
        <translation>Wird zusammen mit der eigenen Korrektur zu den Pegeln addiert.</translation>
    </message>
    <message>
        <source>The tuned frequency is multiplied by this and by your own factor; 1.0 leaves it as it is.</source>
        <translation>Damit und mit dem eigenen Faktor wird die Empfangsfrequenz multipliziert; 1,0 lässt sie, wie sie ist.</translation>
    </message>
    <message>
        <source>Calibration in the receiver</source>
        <translation>Kalibrierung im Empfänger</translation>
    </message>
    <message>
        <source>Takes all four corrections from the memory of the open receiver.</source>
        <translation>Holt alle vier Korrekturen aus dem Speicher des geöffneten Empfängers.</translation>
    </message>
    <message>
        <source>Keeps all four corrections in the memory of the open receiver.</source>
        <translation>Legt alle vier Korrekturen im Speicher des geöffneten Empfängers ab.</translation>
    </message>
    <message>
        <source>Against clicks and impulses</source>
        <translation>Gegen Knacken und Störimpulse</translation>
    </message>
    <message>
        <source>Noise blanker 1</source>
        <translation>Störaustaster 1</translation>
    </message>
    <message>
        <source>How far an impulse must stand out of the mean level to be muted. Lower catches more and hurts the signal sooner.</source>
        <translation>Wie weit ein Impuls über dem mittleren Pegel liegen muss, um ausgetastet zu werden. Weniger fängt mehr und schadet dem Signal eher.</translation>
    </message>
    <message>
        <source> × mean</source>
        <translation> × Mittel</translation>
    </message>
    <message>
        <source>Puts back the values that this blanker works well with.</source>
        <translation>Stellt die Werte wieder her, mit denen dieser Austaster gut arbeitet.</translation>
    </message>
    <message>
        <source>Noise blanker 2</source>
        <translation>Störaustaster 2</translation>
    </message>
    <message>
        <source>How far an impulse must stand out of the mean level to be smoothed over. Lower catches more and hurts the signal sooner.</source>
        <translation>Wie weit ein Impuls über dem mittleren Pegel liegen muss, um geglättet zu werden. Weniger fängt mehr und schadet dem Signal eher.</translation>
    </message>
    <message>
        <source>Lifts one tone out of the noise</source>
        <translation>Hebt einen Ton aus dem Rauschen</translation>
    </message>
    <message>
        <source>CW</source>
        <translation>CW</translation>
    </message>
    <message>
        <source>Gain:</source>
        <translation>Anhebung:</translation>
    </message>
    <message>
        <source>How far the tone is lifted above the rest.</source>
        <translation>Wie weit der Ton über den Rest gehoben wird.</translation>
    </message>
    <message>
        <source>Sharpness of the peak: higher is narrower and rings longer. The peak sits at the CW pitch.</source>
        <translation>Schärfe der Spitze: höher ist schmaler und klingt länger nach. Die Spitze liegt auf dem CW-Ton.</translation>
    </message>
    <message>
        <source>Puts back the values that the peak filter works well with.</source>
        <translation>Stellt die Werte wieder her, mit denen das Spitzenfilter gut arbeitet.</translation>
    </message>
    <message>
        <source>How far the middle of the peak is lifted above the rest.</source>
        <translation>Wie weit die Mitte der Spitze über den Rest gehoben wird.</translation>
    </message>
    <message>
        <source>Sharpness of the peak: higher is narrower.</source>
        <translation>Schärfe der Spitze: höher ist schmaler.</translation>
    </message>
    <message>
        <source>Pitch in the middle of the peak.</source>
        <translation>Tonhöhe in der Mitte der Spitze.</translation>
    </message>
    <message>
        <source> Hz</source>
        <translation> Hz</translation>
    </message>
    <message>
        <source>What belongs to single modes</source>
        <translation>Was zu einzelnen Betriebsarten gehört</translation>
    </message>
    <message>
        <source>Tone at which a CW station in tune is heard.</source>
        <translation>Ton, mit dem eine abgestimmte CW-Station zu hören ist.</translation>
    </message>
    <message>
        <source>Broadcast FM</source>
        <translation>UKW-Rundfunk</translation>
    </message>
    <message>
        <source>Marks stations as American (75 µs) instead of European (50 µs). The decoder of this receiver sounds the same either way.</source>
        <translation>Kennzeichnet Stationen als amerikanisch (75 µs) statt europäisch (50 µs). Der Decoder dieses Empfängers klingt in beiden Fällen gleich.</translation>
    </message>
    <message>
        <source>CW between the ears (DSE)</source>
        <translation>CW zwischen den Ohren (DSE)</translation>
    </message>
    <message>
        <source>Sharpness with which tones below the pitch go to one ear and tones above it to the other.</source>
        <translation>Schärfe, mit der Töne unter der Tonhöhe auf das eine Ohr gehen und Töne darüber auf das andere.</translation>
    </message>
    <message>
        <source>Low tones right instead of left.</source>
        <translation>Tiefe Töne rechts statt links.</translation>
    </message>
    <message>
        <source>Puts back the values that the spread works well with.</source>
        <translation>Stellt die Werte wieder her, mit denen die Verteilung gut arbeitet.</translation>
    </message>
    <message>
        <source>Digital modes</source>
        <translation>Digitale Betriebsarten</translation>
    </message>
    <message>
        <source>Audio frequency at which the tuned frequency is heard in DIGL.</source>
        <translation>Tonfrequenz, mit der die Empfangsfrequenz in DIGL zu hören ist.</translation>
    </message>
    <message>
        <source>Audio frequency at which the tuned frequency is heard in DIGU.</source>
        <translation>Tonfrequenz, mit der die Empfangsfrequenz in DIGU zu hören ist.</translation>
    </message>
    <message>
        <source>Puts back the values that a sound-card decoder works well with.</source>
        <translation>Stellt die Werte wieder her, mit denen ein Soundkarten-Decoder gut arbeitet.</translation>
    </message>
    <message>
        <source>Length of the band filters</source>
        <translation>Länge der Bandfilter</translation>
    </message>
    <message>
        <source>Band filter by mode</source>
        <translation>Bandfilter nach Betriebsart</translation>
    </message>
    <message>
        <source>Length of the band filter in LSB and USB. Longer has steeper edges, more delay and more work for the computer.</source>
        <translation>Länge des Bandfilters in LSB und USB. Ein längeres hat steilere Flanken, verzögert mehr und macht dem Rechner mehr Arbeit.</translation>
    </message>
    <message>
        <source>Length of the band filter in AM, SAM, DSB, NFM and DRM. Longer has steeper edges, more delay and more work for the computer.</source>
        <translation>Länge des Bandfilters in AM, SAM, DSB, NFM und DRM. Ein längeres hat steilere Flanken, verzögert mehr und macht dem Rechner mehr Arbeit.</translation>
    </message>
    <message>
        <source>Length of the band filter in DIGL and DIGU. Longer has steeper edges, more delay and more work for the computer.</source>
        <translation>Länge des Bandfilters in DIGL und DIGU. Ein längeres hat steilere Flanken, verzögert mehr und macht dem Rechner mehr Arbeit.</translation>
    </message>
    <message>
        <source>Length of the band filter in CW. Longer has steeper edges, more delay and more work for the computer.</source>
        <translation>Länge des Bandfilters in CW. Ein längeres hat steilere Flanken, verzögert mehr und macht dem Rechner mehr Arbeit.</translation>
    </message>
    <message>
        <source>Puts back the values that every mode works well with.</source>
        <translation>Stellt die Werte wieder her, mit denen jede Betriebsart gut arbeitet.</translation>
    </message>
    <message>
        <source>Times of the automatic gain control</source>
        <translation>Zeiten der Verstärkungsregelung</translation>
    </message>
    <message>
        <source>Times by mode</source>
        <translation>Zeiten nach Betriebsart der Regelung</translation>
    </message>
    <message>
        <source>Attack</source>
        <translation>Ansprechen</translation>
    </message>
    <message>
        <source>Decay</source>
        <translation>Abklingen</translation>
    </message>
    <message>
        <source>Hang</source>
        <translation>Halten</translation>
    </message>
    <message>
        <source>How fast the gain falls when a signal gets louder.</source>
        <translation>Wie schnell die Verstärkung fällt, wenn ein Signal lauter wird.</translation>
    </message>
    <message>
        <source>Long attack</source>
        <translation>Lang, Ansprechen</translation>
    </message>
    <message>
        <source> ms</source>
        <translation> ms</translation>
    </message>
    <message>
        <source>How fast the gain rises again when a signal gets weaker.</source>
        <translation>Wie schnell die Verstärkung wieder steigt, wenn ein Signal schwächer wird.</translation>
    </message>
    <message>
        <source>Long decay</source>
        <translation>Lang, Abklingen</translation>
    </message>
    <message>
        <source>How long the gain stays before it rises again.</source>
        <translation>Wie lange die Verstärkung bleibt, bevor sie wieder steigt.</translation>
    </message>
    <message>
        <source>Long hang</source>
        <translation>Lang, Halten</translation>
    </message>
    <message>
        <source>Puts back the values that this mode works well with.</source>
        <translation>Stellt die Werte wieder her, mit denen diese Betriebsart der Regelung gut arbeitet.</translation>
    </message>
    <message>
        <source>Slow attack</source>
        <translation>Langsam, Ansprechen</translation>
    </message>
    <message>
        <source>Slow decay</source>
        <translation>Langsam, Abklingen</translation>
    </message>
    <message>
        <source>Slow hang</source>
        <translation>Langsam, Halten</translation>
    </message>
    <message>
        <source>Medium attack</source>
        <translation>Mittel, Ansprechen</translation>
    </message>
    <message>
        <source>Medium decay</source>
        <translation>Mittel, Abklingen</translation>
    </message>
    <message>
        <source>Medium hang</source>
        <translation>Mittel, Halten</translation>
    </message>
    <message>
        <source>Fast attack</source>
        <translation>Schnell, Ansprechen</translation>
    </message>
    <message>
        <source>Fast decay</source>
        <translation>Schnell, Abklingen</translation>
    </message>
    <message>
        <source>Fast hang</source>
        <translation>Schnell, Halten</translation>
    </message>
    <message>
        <source>User attack</source>
        <translation>Eigene, Ansprechen</translation>
    </message>
    <message>
        <source>User decay</source>
        <translation>Eigene, Abklingen</translation>
    </message>
    <message>
        <source>User hang</source>
        <translation>Eigene, Halten</translation>
    </message>
    <message>
        <source>Preamp: </source>
        <translation>Vorverstärker: </translation>
    </message>
    <message>
        <source> dBm</source>
        <translation> dBm</translation>
    </message>
    <message>
        <source>Incorrect HEX value for ADC REG!</source>
        <translation>Falscher HEX-Wert für ADC REG!</translation>
    </message>
    <message>
        <source>&amp;Device</source>
        <translation>&amp;Gerät</translation>
    </message>
    <message>
        <source>&amp;ZephrinNANO:</source>
        <translation>&amp;ZephrinNANO:</translation>
    </message>
    <message>
        <source>&amp;Sample rate:</source>
        <translation>&amp;Abtastrate:</translation>
    </message>
    <message>
        <source>No receiver is there. Plug one in: it appears here within two seconds. If it does not, its udev rule may be missing.</source>
        <translation>Kein Empfänger ist da. Einen anstecken: nach zwei Sekunden erscheint er hier. Wenn nicht, fehlt vielleicht seine udev-Regel.</translation>
    </message>
    <message>
        <source>&amp;Low-pass filter</source>
        <translation>Ti&amp;efpass</translation>
    </message>
    <message>
        <source>Prea&amp;mp</source>
        <translation>Vorverstär&amp;ker</translation>
    </message>
    <message>
        <source>&amp;Automatic preamp</source>
        <translation>A&amp;utomatischer Vorverstärker</translation>
    </message>
    <message>
        <source>L&amp;evel correction:</source>
        <translation>Pegelk&amp;orrektur:</translation>
    </message>
    <message>
        <source>Frequenc&amp;y factor:</source>
        <translation>Freque&amp;nzfaktor:</translation>
    </message>
    <message>
        <source>&amp;Noise</source>
        <translation>&amp;Rauschen</translation>
    </message>
    <message>
        <source>&amp;Taps:</source>
        <translation>K&amp;oeffizienten:</translation>
    </message>
    <message>
        <source>D&amp;elay:</source>
        <translation>Ver&amp;zögerung:</translation>
    </message>
    <message>
        <source>R&amp;ate:</source>
        <translation>&amp;Anpassung:</translation>
    </message>
    <message>
        <source>&amp;Leak:</source>
        <translation>&amp;Leckfaktor:</translation>
    </message>
    <message>
        <source>Noise reduction: defaults</source>
        <translation>Rauschminderung: übliche Werte</translation>
    </message>
    <message>
        <source>Defa&amp;ults</source>
        <translation>Ü&amp;bliche Werte</translation>
    </message>
    <message>
        <source>Automatic n&amp;otch</source>
        <translation>Auto&amp;matisches Notchfilter</translation>
    </message>
    <message>
        <source>Tap&amp;s:</source>
        <translation>Ko&amp;effizienten:</translation>
    </message>
    <message>
        <source>Dela&amp;y:</source>
        <translation>Verzöger&amp;ung:</translation>
    </message>
    <message>
        <source>&amp;Rate:</source>
        <translation>A&amp;npassung:</translation>
    </message>
    <message>
        <source>Lea&amp;k:</source>
        <translation>Lec&amp;kfaktor:</translation>
    </message>
    <message>
        <source>Automatic notch: defaults</source>
        <translation>Automatisches Notchfilter: übliche Werte</translation>
    </message>
    <message>
        <source>Ad&amp;vanced</source>
        <translation>Ser&amp;vice</translation>
    </message>
    <message>
        <source>Data (&amp;hex):</source>
        <translation>&amp;Daten (hex):</translation>
    </message>
    <message>
        <source>&amp;Register (hex):</source>
        <translation>R&amp;egister (hex):</translation>
    </message>
    <message>
        <source>&amp;Write register</source>
        <translation>Register schrei&amp;ben</translation>
    </message>
    <message>
        <source>Atten&amp;uator (hex):</source>
        <translation>Absch&amp;wächer (hex):</translation>
    </message>
    <message>
        <source>Write attenuat&amp;or</source>
        <translation>&amp;Abschwächer schreiben</translation>
    </message>
    <message>
        <source>Re&amp;set</source>
        <translation>&amp;Zurücksetzen</translation>
    </message>
    <message>
        <source>Re&amp;ad</source>
        <translation>&amp;Lesen</translation>
    </message>
    <message>
        <source>Wri&amp;te…</source>
        <translation>Sc&amp;hreiben…</translation>
    </message>
    <message>
        <source>&amp;Blankers</source>
        <translation>Aus&amp;taster</translation>
    </message>
    <message>
        <source>&amp;Threshold:</source>
        <translation>Sch&amp;welle:</translation>
    </message>
    <message>
        <source>Noise blanker 1: defaults</source>
        <translation>Störaustaster 1: übliche Werte</translation>
    </message>
    <message>
        <source>T&amp;hreshold:</source>
        <translation>Sc&amp;hwelle:</translation>
    </message>
    <message>
        <source>Noise blanker 2: defaults</source>
        <translation>Störaustaster 2: übliche Werte</translation>
    </message>
    <message>
        <source>Default&amp;s</source>
        <translation>Übliche W&amp;erte</translation>
    </message>
    <message>
        <source>&amp;Peak filter</source>
        <translation>S&amp;pitzenfilter</translation>
    </message>
    <message>
        <source>C&amp;W</source>
        <translation>C&amp;W</translation>
    </message>
    <message>
        <source>&amp;Quality:</source>
        <translation>Sc&amp;härfe:</translation>
    </message>
    <message>
        <source>Peak filter, CW: defaults</source>
        <translation>Spitzenfilter, CW: übliche Werte</translation>
    </message>
    <message>
        <source>&amp;SSB</source>
        <translation>&amp;SSB</translation>
    </message>
    <message>
        <source>Qualit&amp;y:</source>
        <translation>Schärf&amp;e:</translation>
    </message>
    <message>
        <source>Fr&amp;equency:</source>
        <translation>Freque&amp;nz:</translation>
    </message>
    <message>
        <source>Peak filter, SSB: defaults</source>
        <translation>Spitzenfilter, SSB: übliche Werte</translation>
    </message>
    <message>
        <source>Defau&amp;lts</source>
        <translation>Üb&amp;liche Werte</translation>
    </message>
    <message>
        <source>CW, d&amp;igital, FM</source>
        <translation>CW, d&amp;igital, FM</translation>
    </message>
    <message>
        <source>Pi&amp;tch:</source>
        <translation>T&amp;onhöhe:</translation>
    </message>
    <message>
        <source>A&amp;merican de-emphasis</source>
        <translation>A&amp;merikanische Deemphasis</translation>
    </message>
    <message>
        <source>&amp;Swap the ears</source>
        <translation>Ohre&amp;n vertauschen</translation>
    </message>
    <message>
        <source>CW between the ears: defaults</source>
        <translation>CW zwischen den Ohren: übliche Werte</translation>
    </message>
    <message>
        <source>DIG&amp;L offset:</source>
        <translation>DIG&amp;L-Ablage:</translation>
    </message>
    <message>
        <source>DIGU &amp;offset:</source>
        <translation>DIG&amp;U-Ablage:</translation>
    </message>
    <message>
        <source>Digital modes: defaults</source>
        <translation>Digitale Betriebsarten: übliche Werte</translation>
    </message>
    <message>
        <source>D&amp;efaults</source>
        <translation>Übliche W&amp;erte</translation>
    </message>
    <message>
        <source>&amp;Filters</source>
        <translation>&amp;Filter</translation>
    </message>
    <message>
        <source>&amp;LSB, USB:</source>
        <translation>&amp;LSB, USB:</translation>
    </message>
    <message>
        <source>&amp;AM and others:</source>
        <translation>&amp;AM und andere:</translation>
    </message>
    <message>
        <source>DIGL, DIG&amp;U:</source>
        <translation>DIGL, DIG&amp;U:</translation>
    </message>
    <message>
        <source>C&amp;W:</source>
        <translation>C&amp;W:</translation>
    </message>
    <message>
        <source>Band filter: defaults</source>
        <translation>Bandfilter: übliche Werte</translation>
    </message>
    <message>
        <source>A&amp;GC</source>
        <translation>AG&amp;C</translation>
    </message>
    <message>
        <source>L&amp;ong:</source>
        <translation>&amp;Lang:</translation>
    </message>
    <message>
        <source>Long: defaults</source>
        <translation>Lang: übliche Werte</translation>
    </message>
    <message>
        <source>&amp;Slow:</source>
        <translation>La&amp;ngsam:</translation>
    </message>
    <message>
        <source>Slow: defaults</source>
        <translation>Langsam: übliche Werte</translation>
    </message>
    <message>
        <source>&amp;Medium:</source>
        <translation>&amp;Mittel:</translation>
    </message>
    <message>
        <source>Medium: defaults</source>
        <translation>Mittel: übliche Werte</translation>
    </message>
    <message>
        <source>F&amp;ast:</source>
        <translation>Sc&amp;hnell:</translation>
    </message>
    <message>
        <source>Fast: defaults</source>
        <translation>Schnell: übliche Werte</translation>
    </message>
    <message>
        <source>&amp;User:</source>
        <translation>&amp;Eigene:</translation>
    </message>
    <message>
        <source>Write the calibration</source>
        <translation>Kalibrierung schreiben</translation>
    </message>
    <message>
        <source>Write the calibration into the receiver? What its memory holds now is replaced.</source>
        <translation>Die Kalibrierung in den Empfänger schreiben? Was sein Speicher jetzt enthält, wird ersetzt.</translation>
    </message>
    <message>
        <source>&amp;Write</source>
        <translation>&amp;Schreiben</translation>
    </message>
</context>
</TS>
