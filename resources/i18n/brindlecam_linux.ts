<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<!-- Spanish texts that read differently on Linux: names of keys, places and programs. -->
<TS version="2.1" language="es" sourcelanguage="es">
<context>
    <name>Brindlecam</name>
    <message>
        <source>Brindlecam vive en la barra de menú 🍃</source>
        <translation>Brindlecam vive en la bandeja del sistema 🍃</translation>
    </message>
    <message>
        <source>Presiona ⇧⌘9 para capturar un área o ⇧⌘8 para la pantalla completa; la captura queda lista para pegar. Puedes cambiar los atajos en Configuración….

La primera vez, macOS te pedirá el permiso de “Grabación de pantalla”. Actívalo y vuelve a abrir Brindlecam.</source>
        <translation>Presiona Mayús+Super+9 para capturar un área o Mayús+Super+8 para la pantalla completa; la captura queda lista para pegar. Puedes cambiar los atajos en Configuración….

Si tu escritorio pide permiso para capturar la pantalla, acéptalo.</translation>
    </message>
    <message>
        <source>Actívalo en Ajustes del Sistema → Privacidad y seguridad → Grabación de pantalla y audio del sistema, y después vuelve a abrir Brindlecam.</source>
        <translation>Actívalo en los ajustes de privacidad de tu escritorio y después vuelve a abrir Brindlecam.</translation>
    </message>
    <message>
        <source>Abrir con Vista Previa</source>
        <translation>Abrir con el visor de imágenes</translation>
    </message>
    <message>
        <source>Mostrar en Finder</source>
        <translation>Mostrar en el gestor de archivos</translation>
    </message>
    <message>
        <source>Línea (⇧ para ángulos rectos)</source>
        <translation>Línea (Mayús para ángulos rectos)</translation>
    </message>
    <message>
        <source>Flecha (⇧ para ángulos rectos)</source>
        <translation>Flecha (Mayús para ángulos rectos)</translation>
    </message>
    <message>
        <source>Mover la selección o una anotación (⌫ la borra)</source>
        <translation>Mover la selección o una anotación (Supr la borra)</translation>
    </message>
    <message>
        <source>Deshacer (⌘Z)</source>
        <translation>Deshacer (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Rehacer (⇧⌘Z)</source>
        <translation>Rehacer (Ctrl+Mayús+Z)</translation>
    </message>
    <message>
        <source>Copiar (⌘C o Enter)</source>
        <translation>Copiar (Ctrl+C o Enter)</translation>
    </message>
    <message>
        <source>Guardar (⌘S)</source>
        <translation>Guardar (Ctrl+S)</translation>
    </message>
    <message>
        <source>Haz clic en un atajo y presiona la combinación nueva. Esc cancela y ⌫ lo quita. Debe incluir ⌘, ⌥ o ⌃, salvo teclas de función (F13 = Impr Pant).</source>
        <translation>Haz clic en un atajo y presiona la combinación nueva. Esc cancela y Retroceso lo quita. Debe incluir Super, Alt o Ctrl, salvo teclas de función e Impr Pant.</translation>
    </message>
</context>
</TS>
