<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>AwardTile</name>
    <message>
        <source>New</source>
        <translation>Neu</translation>
    </message>
    <message>
        <source>Earned</source>
        <translation>Erhalten</translation>
    </message>
    <message>
        <source>Not earned yet</source>
        <translation>Noch nicht erhalten</translation>
    </message>
</context>
<context>
    <name>CommandField</name>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
</context>
<context>
    <name>CompletedBar</name>
    <message>
        <source>Hide completed tasks</source>
        <translation>Erledigtes ausblenden</translation>
    </message>
    <message>
        <source>Show completed tasks</source>
        <translation>Erledigtes einblenden</translation>
    </message>
    <message numerus="yes">
        <source>%lld done</source>
        <translation>
            <numerusform>%lld erledigt</numerusform>
            <numerusform>%lld erledigt</numerusform>
        </translation>
    </message>
    <message>
        <source>Hide done</source>
        <translation>Ausblenden</translation>
    </message>
</context>
<context>
    <name>ConfirmationCard</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>CreditsView</name>
    <message>
        <source>Hi, I’m Olo. You found me!</source>
        <translation>Hallo, ich bin Olo. Du hast mich gefunden!</translation>
    </message>
    <message>
        <source>Thanks for using Quillo.
Made with care for the menu bar power user.</source>
        <translation>Danke, dass du Quillo benutzt.
Mit Sorgfalt gemacht für alle, die in der Statusleiste zu Hause sind.</translation>
    </message>
    <message>
        <source>Back to work</source>
        <translation>Zurück an die Arbeit</translation>
    </message>
</context>
<context>
    <name>DateField</name>
    <message>
        <source>Date</source>
        <translation>Datum</translation>
    </message>
</context>
<context>
    <name>EarlierLists</name>
    <message>
        <source>Earlier Lists</source>
        <translation>Frühere Listen</translation>
    </message>
    <message>
        <source>The list that is there now is kept when an earlier one is brought back.</source>
        <translation>Die jetzige Liste wird aufgehoben, wenn eine frühere zurückgeholt wird.</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Wiederherstellen</translation>
    </message>
</context>
<context>
    <name>EmptyState</name>
    <message>
        <source>All clear.</source>
        <translation>Alles erledigt.</translation>
    </message>
</context>
<context>
    <name>EntryRow</name>
    <message>
        <source>New task</source>
        <translation>Neue Aufgabe</translation>
    </message>
    <message>
        <source>Press Return to add. Use natural language for dates and times.</source>
        <translation>Mit der Eingabetaste hinzufügen. Datum und Uhrzeit in natürlicher Sprache, auf Englisch.</translation>
    </message>
    <message>
        <source>Add a task — try “Call mom tomorrow at 9am”</source>
        <translation>Neue Aufgabe, etwa „Call mom tomorrow at 9am“</translation>
    </message>
</context>
<context>
    <name>FeedbackSheet</name>
    <message>
        <source>How is Quillo working for you?</source>
        <translation>Wie gefällt dir Quillo?</translation>
    </message>
    <message>
        <source>If you have a moment, your feedback helps a lot.</source>
        <translation>Wenn du einen Moment hast: Deine Rückmeldung hilft sehr.</translation>
    </message>
    <message>
        <source>Send feedback by email</source>
        <translation>Rückmeldung per E-Mail</translation>
    </message>
    <message>
        <source>Leave a public review</source>
        <translation>Öffentlich bewerten</translation>
    </message>
    <message>
        <source>Maybe later</source>
        <translation>Vielleicht später</translation>
    </message>
</context>
<context>
    <name>HotKeyRecorderView</name>
    <message>
        <source>Press shortcut…</source>
        <translation>Tasten drücken …</translation>
    </message>
</context>
<context>
    <name>MascotView</name>
    <message>
        <source>Olo, the Quillo mascot</source>
        <translation>Olo, das Maskottchen von Quillo</translation>
    </message>
    <message>
        <source>Tap five times for a surprise.</source>
        <translation>Fünfmal tippen für eine Überraschung.</translation>
    </message>
</context>
<context>
    <name>MonthCalendar</name>
    <message>
        <source>Previous month</source>
        <translation>Voriger Monat</translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation>%1 %2</translation>
    </message>
    <message>
        <source>Next month</source>
        <translation>Nächster Monat</translation>
    </message>
</context>
<context>
    <name>NoRecords</name>
    <message>
        <source>No completions yet</source>
        <translation>Noch nichts erledigt</translation>
    </message>
    <message>
        <source>Complete a few tasks to set a record</source>
        <translation>Erledige ein paar Aufgaben für einen Rekord</translation>
    </message>
</context>
<context>
    <name>OptionsMenu</name>
    <message>
        <source>Quick Add… (⌃⌥⌘T)</source>
        <translation>Schnelleingabe … (Strg+Alt+Super+T)</translation>
    </message>
    <message>
        <source>Export as Markdown…</source>
        <translation>Als Markdown exportieren …</translation>
    </message>
    <message>
        <source>Export as JSON…</source>
        <translation>Als JSON exportieren …</translation>
    </message>
    <message>
        <source>Clear Completed</source>
        <translation>Erledigte löschen</translation>
    </message>
    <message>
        <source>Statistics…</source>
        <translation>Statistik …</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Quit Quillo</source>
        <translation>Quillo beenden</translation>
    </message>
</context>
<context>
    <name>PopoverFooter</name>
    <message>
        <source>Press</source>
        <translation>Mit</translation>
    </message>
    <message>
        <source>⌃⌥⌘T</source>
        <translation>Strg+Alt+Super+T</translation>
    </message>
    <message>
        <source>from anywhere to add.</source>
        <translation>von überall hinzufügen.</translation>
    </message>
</context>
<context>
    <name>PopoverHeader</name>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
    <message numerus="yes">
        <source>%lld active</source>
        <translation>
            <numerusform>%lld offen</numerusform>
            <numerusform>%lld offen</numerusform>
        </translation>
    </message>
    <message>
        <source>More options</source>
        <translation>Weitere Optionen</translation>
    </message>
</context>
<context>
    <name>PopoverWindow</name>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
</context>
<context>
    <name>QuickAddPanel</name>
    <message>
        <source>New task</source>
        <translation>Neue Aufgabe</translation>
    </message>
</context>
<context>
    <name>QuickAddView</name>
    <message>
        <source>New task</source>
        <translation>Neue Aufgabe</translation>
    </message>
    <message>
        <source>Press Return to add. Press Escape to cancel.</source>
        <translation>Mit der Eingabetaste hinzufügen, mit Esc abbrechen.</translation>
    </message>
    <message>
        <source>Add a task — try “Email Sam in 2 hours”</source>
        <translation>Neue Aufgabe, etwa „Email Sam in 2 hours“</translation>
    </message>
</context>
<context>
    <name>Quillo</name>
    <message>
        <source>Quillo — open task list</source>
        <translation>Quillo – Aufgabenliste öffnen</translation>
    </message>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
    <message>
        <source>Open the Quillo popover</source>
        <translation>Die Aufgabenliste von Quillo öffnen</translation>
    </message>
    <message>
        <source>Export as Markdown</source>
        <translation>Als Markdown exportieren</translation>
    </message>
    <message>
        <source>Export as JSON</source>
        <translation>Als JSON exportieren</translation>
    </message>
    <message>
        <source>Quick Add…</source>
        <translation>Schnelleingabe …</translation>
    </message>
    <message>
        <source>Settings…</source>
        <translation>Einstellungen …</translation>
    </message>
    <message>
        <source>Export…</source>
        <translation>Exportieren …</translation>
    </message>
    <message>
        <source>Check for Updates…</source>
        <translation>Nach Updates suchen …</translation>
    </message>
    <message>
        <source>Quit Quillo</source>
        <translation>Quillo beenden</translation>
    </message>
    <message>
        <source>Open Quillo</source>
        <translation>Quillo öffnen</translation>
    </message>
    <message>
        <source>Markdown</source>
        <translation>Markdown</translation>
    </message>
    <message>
        <source>JSON</source>
        <translation>JSON</translation>
    </message>
    <message>
        <source>Quick Add</source>
        <translation>Schnelleingabe</translation>
    </message>
    <message>
        <source>1 more reminder was due</source>
        <translation>1 weitere Erinnerung war fällig</translation>
    </message>
    <message>
        <source>Quillo %1 (%2) on macOS</source>
        <translation>Quillo %1 (%2) unter Linux</translation>
    </message>
    <message>
        <source>Quillo feedback</source>
        <translation>Rückmeldung zu Quillo</translation>
    </message>
    <message>
        <source>Today, </source>
        <translation>Heute, </translation>
    </message>
    <message>
        <source>Tomorrow, </source>
        <translation>Morgen, </translation>
    </message>
    <message>
        <source>Completed task: </source>
        <translation>Erledigte Aufgabe: </translation>
    </message>
    <message>
        <source>Due </source>
        <translation>Fällig </translation>
    </message>
    <message>
        <source>Tadpole</source>
        <translation>Kaulquappe</translation>
    </message>
    <message>
        <source>Hopper</source>
        <translation>Hüpfer</translation>
    </message>
    <message>
        <source>Leaper</source>
        <translation>Springer</translation>
    </message>
    <message>
        <source>Bullfrog</source>
        <translation>Ochsenfrosch</translation>
    </message>
    <message>
        <source>Croak Master</source>
        <translation>Quakmeister</translation>
    </message>
    <message>
        <source>Pondsmith</source>
        <translation>Teichbauer</translation>
    </message>
    <message>
        <source>Lightning Fast</source>
        <translation>Blitzschnell</translation>
    </message>
    <message>
        <source>Done in under a minute</source>
        <translation>In unter einer Minute</translation>
    </message>
    <message>
        <source>Quick Draw</source>
        <translation>Schnell gezogen</translation>
    </message>
    <message>
        <source>Done in under five</source>
        <translation>In unter fünf Minuten</translation>
    </message>
    <message>
        <source>Long Game</source>
        <translation>Langer Atem</translation>
    </message>
    <message>
        <source>Patience pays off</source>
        <translation>Geduld zahlt sich aus</translation>
    </message>
    <message>
        <source>Week-long Winner</source>
        <translation>Wochensieger</translation>
    </message>
    <message>
        <source>Seven days in a row</source>
        <translation>Sieben Tage am Stück</translation>
    </message>
    <message>
        <source>Monthly Maven</source>
        <translation>Monatsmeister</translation>
    </message>
    <message>
        <source>Thirty days strong</source>
        <translation>Dreißig Tage am Stück</translation>
    </message>
    <message>
        <source>Early Bird</source>
        <translation>Früher Vogel</translation>
    </message>
    <message>
        <source>Crushed before 8 AM</source>
        <translation>Vor 8 Uhr geschafft</translation>
    </message>
    <message>
        <source>Night Owl</source>
        <translation>Nachteule</translation>
    </message>
    <message>
        <source>Burned the midnight oil</source>
        <translation>Bis tief in die Nacht</translation>
    </message>
    <message>
        <source>%1 tasks completed · top rank reached 👑</source>
        <translation>%1 Aufgaben erledigt · höchster Rang erreicht 👑</translation>
    </message>
    <message>
        <source>%1 tasks completed · %2 more to reach %3</source>
        <translation>%1 Aufgaben erledigt · noch %2 bis %3</translation>
    </message>
    <message>
        <source>Remind you of your tasks from login on.</source>
        <translation>Dich ab der Anmeldung an deine Aufgaben erinnern.</translation>
    </message>
    <message numerus="yes">
        <source>%n more reminders were due</source>
        <translation>
            <numerusform>%n weitere Erinnerung war fällig</numerusform>
            <numerusform>%n weitere Erinnerungen waren fällig</numerusform>
        </translation>
    </message>
    <message>
        <source>WEBSITE_URL</source>
        <translation>WEBSITE_URL</translation>
    </message>
    <message>
        <source>The password for %1 at %2 is not known. Give it in the settings, and your list is in step again.</source>
        <translation>Das Passwort für %1 bei %2 ist nicht bekannt. Gib es in den Einstellungen ein, dann wird wieder abgeglichen.</translation>
    </message>
    <message>
        <source>Sync needs your password</source>
        <translation>Der Abgleich braucht dein Passwort</translation>
    </message>
</context>
<context>
    <name>ReleaseNotes</name>
    <message>
        <source>What is new</source>
        <translation>Was ist neu</translation>
    </message>
</context>
<context>
    <name>ReminderPopup</name>
    <message>
        <source>Remind me</source>
        <translation>Erinnern</translation>
    </message>
    <message>
        <source>In 1 hour</source>
        <translation>In 1 Stunde</translation>
    </message>
    <message>
        <source>In 3 hours</source>
        <translation>In 3 Stunden</translation>
    </message>
    <message>
        <source>Tonight</source>
        <translation>Heute Abend</translation>
    </message>
    <message>
        <source>Tomorrow 9 AM</source>
        <translation>Morgen 9 Uhr</translation>
    </message>
    <message>
        <source>Set</source>
        <translation>Setzen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Entfernen</translation>
    </message>
</context>
<context>
    <name>RowActions</name>
    <message>
        <source>Set reminder for %1</source>
        <translation>Erinnerung setzen für %1</translation>
    </message>
    <message>
        <source>Delete %1</source>
        <translation>%1 löschen</translation>
    </message>
</context>
<context>
    <name>SettingsData</name>
    <message>
        <source>Data</source>
        <translation>Daten</translation>
    </message>
    <message>
        <source>Clear Completed Tasks</source>
        <translation>Erledigte Aufgaben löschen</translation>
    </message>
    <message>
        <source>Export as Markdown…</source>
        <translation>Als Markdown exportieren …</translation>
    </message>
    <message>
        <source>Export as JSON…</source>
        <translation>Als JSON exportieren …</translation>
    </message>
</context>
<context>
    <name>SettingsFooter</name>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
    <message>
        <source>Tiny, fast todo list that lives in your menu bar.</source>
        <translation>Kleine, schnelle Aufgabenliste in deiner Statusleiste.</translation>
    </message>
    <message>
        <source>Visit website</source>
        <translation>Website besuchen</translation>
    </message>
    <message>
        <source>Contact support</source>
        <translation>Hilfe anfragen</translation>
    </message>
</context>
<context>
    <name>SettingsGeneral</name>
    <message>
        <source>Launch Quillo at login</source>
        <translation>Quillo bei der Anmeldung starten</translation>
    </message>
    <message>
        <source>Sync via iCloud</source>
        <translation>Zwischen Rechnern abgleichen</translation>
    </message>
    <message>
        <source>Keeps your list in sync across your Macs.</source>
        <translation>Hält deine Liste auf allen deinen Rechnern gleich.</translation>
    </message>
    <message>
        <source>Configure…</source>
        <translation>Einrichten …</translation>
    </message>
</context>
<context>
    <name>SettingsShortcut</name>
    <message>
        <source>Quick Add Hotkey</source>
        <translation>Tastenkürzel der Schnelleingabe</translation>
    </message>
    <message>
        <source>Press the new shortcut, or Esc to cancel.</source>
        <translation>Drücke das neue Tastenkürzel oder Esc zum Abbrechen.</translation>
    </message>
    <message>
        <source>Click the field to change the shortcut in the settings of your desktop. Press from anywhere to capture a task.</source>
        <translation>Klicke in das Feld, um das Tastenkürzel in den Einstellungen deines Desktops zu ändern. Es erfasst von überall eine Aufgabe.</translation>
    </message>
    <message>
        <source>Click the field to record a new shortcut. Press from anywhere to capture a task.</source>
        <translation>Klicke in das Feld, um ein neues Tastenkürzel aufzunehmen. Es erfasst von überall eine Aufgabe.</translation>
    </message>
    <message>
        <source>Open Quick Add</source>
        <translation>Schnelleingabe öffnen</translation>
    </message>
    <message>
        <source>Restore Default</source>
        <translation>Zurücksetzen</translation>
    </message>
</context>
<context>
    <name>SettingsStatistics</name>
    <message>
        <source>Statistics</source>
        <translation>Statistik</translation>
    </message>
    <message>
        <source>Track completion statistics</source>
        <translation>Erledigtes zählen</translation>
    </message>
    <message>
        <source>Counts completions, streaks, and personal records. Stays on this Mac.</source>
        <translation>Zählt Erledigtes, Serien und eigene Rekorde. Bleibt auf diesem Rechner.</translation>
    </message>
    <message>
        <source>Reset Statistics…</source>
        <translation>Statistik zurücksetzen …</translation>
    </message>
</context>
<context>
    <name>SettingsUpdates</name>
    <message>
        <source>Updates</source>
        <translation>Updates</translation>
    </message>
    <message>
        <source>Check for updates automatically</source>
        <translation>Automatisch nach Updates suchen</translation>
    </message>
    <message>
        <source>When on, Quillo checks for new versions in the background and asks before installing. Manual checks are always available from the menu.</source>
        <translation>Wenn eingeschaltet, sucht Quillo im Hintergrund nach neuen Versionen und fragt vor der Installation. Von Hand geht es immer über das Menü.</translation>
    </message>
    <message>
        <source>Check for Updates Now…</source>
        <translation>Jetzt nach Updates suchen …</translation>
    </message>
</context>
<context>
    <name>SettingsView</name>
    <message>
        <source>Reset all statistics?</source>
        <translation>Die ganze Statistik zurücksetzen?</translation>
    </message>
    <message>
        <source>This will permanently erase your completion count, streaks, fastest and slowest records, and earned awards. This can&apos;t be undone.</source>
        <translation>Das löscht endgültig die Zahl deiner erledigten Aufgaben, deine Serien, die schnellsten und langsamsten Rekorde und deine Auszeichnungen. Es lässt sich nicht rückgängig machen.</translation>
    </message>
    <message>
        <source>Reset Statistics</source>
        <translation>Statistik zurücksetzen</translation>
    </message>
</context>
<context>
    <name>SettingsWindow</name>
    <message>
        <source>Quillo Settings</source>
        <translation>Quillo – Einstellungen</translation>
    </message>
</context>
<context>
    <name>StatsView</name>
    <message>
        <source>Quillo Statistics</source>
        <translation>Quillo – Statistik</translation>
    </message>
    <message>
        <source>Today</source>
        <translation>Heute</translation>
    </message>
    <message>
        <source>This week</source>
        <translation>Diese Woche</translation>
    </message>
    <message>
        <source>All time</source>
        <translation>Insgesamt</translation>
    </message>
    <message>
        <source>Streak</source>
        <translation>Serie</translation>
    </message>
    <message>
        <source>Best streak</source>
        <translation>Beste Serie</translation>
    </message>
    <message>
        <source>Avg time</source>
        <translation>Ø Dauer</translation>
    </message>
    <message>
        <source>Fastest</source>
        <translation>Schnellste</translation>
    </message>
    <message>
        <source>Slowest</source>
        <translation>Langsamste</translation>
    </message>
    <message>
        <source>Awards</source>
        <translation>Auszeichnungen</translation>
    </message>
</context>
<context>
    <name>StatsWindow</name>
    <message>
        <source>Quillo Statistics</source>
        <translation>Quillo – Statistik</translation>
    </message>
</context>
<context>
    <name>SyncAnswer</name>
    <message>
        <source>One moment…</source>
        <translation>Einen Moment …</translation>
    </message>
    <message>
        <source>There are tasks here (%1) and there (%2). Which list goes on? The other one is kept among the earlier lists.</source>
        <translation>Es gibt Aufgaben hier (%1) und dort (%2). Welche Liste gilt weiter? Die andere wird bei den früheren Listen aufgehoben.</translation>
    </message>
    <message>
        <source>Keep the List of This Computer</source>
        <translation>Liste dieses Rechners behalten</translation>
    </message>
    <message>
        <source>Keep the Other List</source>
        <translation>Die andere Liste behalten</translation>
    </message>
</context>
<context>
    <name>SyncPage</name>
    <message>
        <source>Sync</source>
        <translation>Abgleich</translation>
    </message>
    <message>
        <source>Done</source>
        <translation>Fertig</translation>
    </message>
    <message>
        <source>Use This Place</source>
        <translation>Diesen Ort benutzen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Test Connection</source>
        <translation>Verbindung prüfen</translation>
    </message>
</context>
<context>
    <name>SyncPlaceForm</name>
    <message>
        <source>Sync Through</source>
        <translation>Abgleichen über</translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>Nichts</translation>
    </message>
    <message>
        <source>The list stays on this computer.</source>
        <translation>Die Liste bleibt auf diesem Rechner.</translation>
    </message>
    <message>
        <source>A folder</source>
        <translation>Einen Ordner</translation>
    </message>
    <message>
        <source>One that Syncthing, Nextcloud, Dropbox or a network keeps in step.</source>
        <translation>Einen, den Syncthing, Nextcloud, Dropbox oder ein Netzwerk abgleicht.</translation>
    </message>
    <message>
        <source>A WebDAV server</source>
        <translation>Einen WebDAV-Server</translation>
    </message>
    <message>
        <source>Such as Nextcloud, ownCloud or a server of your own.</source>
        <translation>Etwa Nextcloud, ownCloud oder einen eigenen Server.</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation>Ordner wählen …</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>User</source>
        <translation>Benutzer</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>unchanged</source>
        <translation>unverändert</translation>
    </message>
    <message>
        <source>https://cloud.example.org/dav</source>
        <translation>https://cloud.example.org/dav</translation>
    </message>
</context>
<context>
    <name>SyncState</name>
    <message>
        <source>State</source>
        <translation>Zustand</translation>
    </message>
    <message>
        <source>In step</source>
        <translation>Abgeglichen</translation>
    </message>
    <message>
        <source>Not in step</source>
        <translation>Nicht abgeglichen</translation>
    </message>
    <message>
        <source>Last: %1</source>
        <translation>Zuletzt: %1</translation>
    </message>
    <message>
        <source>Sync Now</source>
        <translation>Jetzt abgleichen</translation>
    </message>
    <message>
        <source>Last changed: %1</source>
        <translation>Zuletzt geändert: %1</translation>
    </message>
    <message>
        <source>Nothing was changed there yet.</source>
        <translation>Dort wurde noch nichts geändert.</translation>
    </message>
    <message>
        <source>Forget</source>
        <translation>Vergessen</translation>
    </message>
</context>
<context>
    <name>TaskList</name>
    <message>
        <source>Quillo</source>
        <translation>Quillo</translation>
    </message>
</context>
<context>
    <name>TaskMenu</name>
    <message>
        <source>Mark incomplete</source>
        <translation>Wieder öffnen</translation>
    </message>
    <message>
        <source>Mark complete</source>
        <translation>Erledigen</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Löschen</translation>
    </message>
</context>
<context>
    <name>TextMenu</name>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Alles auswählen</translation>
    </message>
</context>
<context>
    <name>TextMenuWindow</name>
    <message>
        <source>Menu</source>
        <translation>Menü</translation>
    </message>
</context>
<context>
    <name>TimeField</name>
    <message>
        <source>Time</source>
        <translation>Uhrzeit</translation>
    </message>
</context>
<context>
    <name>TitleEditor</name>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
</context>
<context>
    <name>UpdateView</name>
    <message>
        <source>Download</source>
        <translation>Herunterladen</translation>
    </message>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner anzeigen</translation>
    </message>
    <message>
        <source>Try Again</source>
        <translation>Noch einmal versuchen</translation>
    </message>
    <message>
        <source>Later</source>
        <translation>Später</translation>
    </message>
    <message>
        <source>Skip This Version</source>
        <translation>Version überspringen</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>UpdateWindow</name>
    <message>
        <source>Software Update</source>
        <translation>Softwareaktualisierung</translation>
    </message>
</context>
<context>
    <name>quillo::SyncModel</name>
    <message>
        <source>This computer</source>
        <translation>Dieser Rechner</translation>
    </message>
    <message>
        <source>The place can be used.</source>
        <translation>Der Ort lässt sich benutzen.</translation>
    </message>
    <message>
        <source>In step.</source>
        <translation>Abgeglichen.</translation>
    </message>
    <message>
        <source>The computer was forgotten.</source>
        <translation>Der Rechner wurde vergessen.</translation>
    </message>
    <message>
        <source>The earlier list is back.</source>
        <translation>Die frühere Liste ist wieder da.</translation>
    </message>
    <message>
        <source>Folder to Sync Through</source>
        <translation>Ordner für den Abgleich</translation>
    </message>
</context>
<context>
    <name>quillo::UpdateModel</name>
    <message>
        <source>Checking for updates…</source>
        <translation>Suche nach Updates …</translation>
    </message>
    <message>
        <source>Quillo is up to date</source>
        <translation>Quillo ist aktuell</translation>
    </message>
    <message>
        <source>A new version of Quillo is available</source>
        <translation>Es gibt eine neue Version von Quillo</translation>
    </message>
    <message>
        <source>Downloading Quillo %1…</source>
        <translation>Quillo %1 wird heruntergeladen …</translation>
    </message>
    <message>
        <source>Quillo %1 was downloaded</source>
        <translation>Quillo %1 wurde heruntergeladen</translation>
    </message>
    <message>
        <source>This Quillo does not look for updates</source>
        <translation>Dieses Quillo sucht nicht nach Updates</translation>
    </message>
    <message>
        <source>The update could not be downloaded</source>
        <translation>Das Update konnte nicht heruntergeladen werden</translation>
    </message>
    <message>
        <source>Quillo could not check for updates</source>
        <translation>Quillo konnte nicht nach Updates suchen</translation>
    </message>
    <message>
        <source>Version %1 is the newest there is.</source>
        <translation>Version %1 ist die neueste.</translation>
    </message>
    <message>
        <source>Version %1 is there; you have %2. Would you like to download it?</source>
        <translation>Version %1 ist da, du hast %2. Möchtest du sie herunterladen?</translation>
    </message>
    <message>
        <source>Version %1 is there; you have %2. Your system&apos;s package manager installed Quillo, and brings the new version.</source>
        <translation>Version %1 ist da, du hast %2. Die Paketverwaltung deines Systems hat Quillo installiert und bringt die neue Version.</translation>
    </message>
    <message>
        <source>Version %1 is there; you have %2. A package manager installed Quillo, and brings the new version with this command:</source>
        <translation>Version %1 ist da, du hast %2. Eine Paketverwaltung hat Quillo installiert und bringt die neue Version mit diesem Befehl:</translation>
    </message>
    <message>
        <source>“%1” is in your download folder, and is what the makers of Quillo signed. Quit Quillo before you install it.</source>
        <translation>„%1“ liegt in deinem Download-Ordner und ist das, was die Macher von Quillo unterschrieben haben. Beende Quillo, bevor du es installierst.</translation>
    </message>
    <message>
        <source>It was built without the address of new versions. They come from where you got Quillo.</source>
        <translation>Es wurde ohne die Adresse neuer Versionen gebaut. Sie kommen von dort, woher du Quillo hast.</translation>
    </message>
    <message>
        <source>The server could not be reached, or the connection was lost. Check your connection to the internet, or try again later.</source>
        <translation>Der Server war nicht zu erreichen, oder die Verbindung brach ab. Prüfe deine Internetverbindung oder versuche es später noch einmal.</translation>
    </message>
    <message>
        <source>The server takes too long to answer. Try again later.</source>
        <translation>Der Server antwortet zu langsam. Versuche es später noch einmal.</translation>
    </message>
    <message>
        <source>The server leads to a connection that is not protected. Nothing was loaded from there.</source>
        <translation>Der Server führt zu einer ungeschützten Verbindung. Von dort wurde nichts geladen.</translation>
    </message>
    <message>
        <source>The server&apos;s list of versions is far too long. It was not used.</source>
        <translation>Die Versionsliste des Servers ist viel zu lang. Sie wurde nicht verwendet.</translation>
    </message>
    <message>
        <source>The server&apos;s list of versions was not signed by the makers of Quillo. It was not used.</source>
        <translation>Die Versionsliste des Servers ist nicht von den Machern von Quillo unterschrieben. Sie wurde nicht verwendet.</translation>
    </message>
    <message>
        <source>The server&apos;s list of versions cannot be understood.</source>
        <translation>Die Versionsliste des Servers ist nicht zu verstehen.</translation>
    </message>
    <message>
        <source>The server&apos;s list of versions is older than one that was seen before. It was not used.</source>
        <translation>Die Versionsliste des Servers ist älter als eine, die schon da war. Sie wurde nicht verwendet.</translation>
    </message>
    <message>
        <source>There is a new version, but it needs a newer system than this one.</source>
        <translation>Es gibt eine neue Version, doch sie braucht ein neueres System als dieses.</translation>
    </message>
    <message>
        <source>The download does not have the size that it should have. It was not kept.</source>
        <translation>Die heruntergeladene Datei hat nicht die richtige Größe. Sie wurde nicht behalten.</translation>
    </message>
    <message>
        <source>The download was not signed by the makers of Quillo. It was not kept.</source>
        <translation>Die heruntergeladene Datei ist nicht von den Machern von Quillo unterschrieben. Sie wurde nicht behalten.</translation>
    </message>
    <message>
        <source>The download could not be saved. Is your download folder full, or closed to you?</source>
        <translation>Die Datei konnte nicht gespeichert werden. Ist dein Download-Ordner voll oder für dich gesperrt?</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
</context>
</TS>
