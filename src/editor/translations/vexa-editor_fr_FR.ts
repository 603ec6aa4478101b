<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>VexaActionManager</name>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
</context>
<context>
    <name>VexaContext</name>
    <message>
        <source>The image is empty: a document needs at least one pixel.</source>
        <translation>L&apos;image est vide : un document doit contenir au moins un pixel.</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>Arrière-plan</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Supprimer</translation>
    </message>
    <message>
        <source>The image is too large: a document holds at most about two billion pixels.</source>
        <translation>L&apos;image est trop grande : un document contient au plus environ deux milliards de pixels.</translation>
    </message>
    <message>
        <source>Not enough memory for a %1 x %2 image (%3 MB).</source>
        <translation>Mémoire insuffisante pour une image de %1 x %2 (%3 Mo).</translation>
    </message>
</context>
<context>
    <name>VexaEditorWindow</name>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Fichier</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>&amp;Ouvrir...</translation>
    </message>
    <message>
        <source>Save &amp;Image As...</source>
        <translation>Enregistrer l&apos;&amp;image sous...</translation>
    </message>
    <message>
        <source>&amp;Export Selection Mask...</source>
        <translation>&amp;Exporter le masque de sélection...</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>É&amp;dition</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Annuler</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Rétablir</translation>
    </message>
    <message>
        <source>Undo Tool Step</source>
        <translation>Annuler l&apos;étape de l&apos;outil</translation>
    </message>
    <message>
        <source>Alt+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Z</translation>
    </message>
    <message>
        <source>Redo Tool Step</source>
        <translation>Rétablir l&apos;étape de l&apos;outil</translation>
    </message>
    <message>
        <source>Alt+Shift+Z</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Alt+Shift+Z</translation>
    </message>
    <message>
        <source>&amp;Select</source>
        <translation>&amp;Sélection</translation>
    </message>
    <message>
        <source>&amp;All</source>
        <translation>&amp;Tout sélectionner</translation>
    </message>
    <message>
        <source>&amp;None</source>
        <translation>&amp;Désélectionner</translation>
    </message>
    <message>
        <source>Ctrl+D</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+D</translation>
    </message>
    <message>
        <source>&amp;Invert</source>
        <translation>&amp;Intervertir</translation>
    </message>
    <message>
        <source>Ctrl+Shift+I</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+Shift+I</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Outils</translation>
    </message>
    <message>
        <source>%1 is not available in this build of the plug-in</source>
        <translation>%1 n&apos;est pas disponible dans cette version du module externe</translation>
    </message>
    <message>
        <source>Foreground colour</source>
        <translation>Couleur de premier plan</translation>
    </message>
    <message>
        <source>Tool options</source>
        <translation>Options d&apos;outil</translation>
    </message>
    <message>
        <source>Cannot open %1: %2</source>
        <translation>Impossible d&apos;ouvrir %1 : %2</translation>
    </message>
    <message>
        <source>There is no document to save.</source>
        <translation>Il n&apos;y a aucun document à enregistrer.</translation>
    </message>
    <message>
        <source>Cannot write %1.</source>
        <translation type="vanished">Impossible d&apos;écrire %1.</translation>
    </message>
    <message>
        <source>There is no document.</source>
        <translation>Il n&apos;y a aucun document.</translation>
    </message>
    <message>
        <source>No document</source>
        <translation>Aucun document</translation>
    </message>
    <message>
        <source>%1 - Vexa Selections</source>
        <translation>%1 - Vexa Selections</translation>
    </message>
    <message>
        <source>Open Image</source>
        <translation>Ouvrir une image</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</source>
        <translation type="vanished">Images (*.png *.jpg *.jpeg *.bmp *.gif *.tif *.tiff *.webp)</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Enregistrer l&apos;image</translation>
    </message>
    <message>
        <source>PNG image (*.png)</source>
        <translation>Image PNG (*.png)</translation>
    </message>
    <message>
        <source>Export Selection Mask</source>
        <translation>Exporter le masque de sélection</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>Matting View…</source>
        <translation>Vue de détourage…</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>&amp;Affichage</translation>
    </message>
    <message>
        <source>Zoom &amp;In</source>
        <translation>Zoom &amp;avant</translation>
    </message>
    <message>
        <source>Zoom &amp;Out</source>
        <translation>Zoom a&amp;rrière</translation>
    </message>
    <message>
        <source>&amp;Fit to Window</source>
        <translation>A&amp;juster à la fenêtre</translation>
    </message>
    <message>
        <source>Ctrl+0</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+0</translation>
    </message>
    <message>
        <source>&amp;100 %</source>
        <translation>&amp;100 %</translation>
    </message>
    <message>
        <source>Ctrl+1</source>
        <translatorcomment>notr: key sequence, parsed by QKeySequence in its portable form</translatorcomment>
        <translation>Ctrl+1</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
    <message>
        <source>&amp;Undo %1</source>
        <translation>&amp;Annuler : %1</translation>
    </message>
    <message>
        <source>&amp;Redo %1</source>
        <translation>&amp;Rétablir : %1</translation>
    </message>
    <message>
        <source>Images (%1)</source>
        <translation>Images (%1)</translation>
    </message>
    <message>
        <source>Opening %1…</source>
        <translation>Ouverture de %1…</translation>
    </message>
    <message>
        <source>Saving %1…</source>
        <translation>Enregistrement de %1…</translation>
    </message>
</context>
<context>
    <name>VexaImageFile</name>
    <message>
        <source>%1 GB</source>
        <translation>%1 Go</translation>
    </message>
    <message>
        <source>%1 MB</source>
        <translation>%1 Mo</translation>
    </message>
    <message>
        <source>too large: %1 x %2 needs %3, more than the %4 this machine allows for one image</source>
        <translation>trop grande : %1 x %2 demande %3, plus que les %4 que cette machine accepte pour une image</translation>
    </message>
    <message>
        <source>empty file</source>
        <translation>fichier vide</translation>
    </message>
    <message>
        <source>not enough memory to convert the %1 x %2 picture to 8 bits a channel</source>
        <translation>mémoire insuffisante pour convertir l’image de %1 x %2 en 8 bits par canal</translation>
    </message>
    <message>
        <source>damaged file: it ends before the data it declares</source>
        <translation>fichier endommagé : il se termine avant les données qu’il annonce</translation>
    </message>
</context>
<context>
    <name>VexaImageSave</name>
    <message>
        <source>Cannot write %1: the name has no suffix of an image format written here (such as .png).</source>
        <translation>Impossible d&apos;écrire %1 : le nom ne se termine pas par l&apos;extension d&apos;un format d&apos;image écrit ici (comme .png).</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>Impossible d&apos;écrire %1 : %2</translation>
    </message>
    <message>
        <source>the disk is full or the file too large for it</source>
        <translation>le disque est plein ou le fichier trop grand pour lui</translation>
    </message>
</context>
<context>
    <name>VexaMattingWindow</name>
    <message>
        <source>Matting View</source>
        <translation>Vue de détourage</translation>
    </message>
    <message>
        <source>This build of the plug-in has no matting view.</source>
        <translation>Cette version du module externe n&apos;a pas de vue de détourage.</translation>
    </message>
    <message>
        <source>Matting</source>
        <translation>Détourage</translation>
    </message>
    <message>
        <source>Marks:</source>
        <translation>Marques :</translation>
    </message>
    <message>
        <source>Left object, right unknown, middle erases</source>
        <translation type="vanished">Gauche : objet, droit : inconnu, milieu : effacer</translation>
    </message>
    <message>
        <source>Left background, right object, middle unknown</source>
        <translation>Gauche : arrière-plan, droit : objet, milieu : inconnu</translation>
    </message>
    <message>
        <source>Left unknown, right object, middle erases</source>
        <translation>Gauche : inconnu, droit : objet, milieu : effacer</translation>
    </message>
    <message>
        <source>What the mouse buttons paint</source>
        <translation>Ce que peignent les boutons de la souris</translation>
    </message>
    <message>
        <source> Brush:</source>
        <translation> Pinceau :</translation>
    </message>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Matte</source>
        <translation type="vanished">Demi-largeur du trait ; aussi le nombre de passes de lissage de « Détourage »</translation>
    </message>
    <message>
        <source>Auto Flood</source>
        <translation>Remplissage auto</translation>
    </message>
    <message>
        <source>Flood 16 pixels after each object stroke</source>
        <translation>Remplir 16 pixels après chaque trait d&apos;objet</translation>
    </message>
    <message>
        <source>Flood</source>
        <translation>Remplir</translation>
    </message>
    <message>
        <source>Grow the object and background marks up to the unknown band</source>
        <translation>Étendre les marques d&apos;objet et d&apos;arrière-plan jusqu&apos;à la bande inconnue</translation>
    </message>
    <message>
        <source>Matte</source>
        <translation>Détourage</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Réinitialiser</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Composite</source>
        <translation>Composition</translation>
    </message>
    <message>
        <source>Use as selection</source>
        <translation>Utiliser comme sélection</translation>
    </message>
    <message>
        <source>The matte is now the selection.</source>
        <translation>Le détourage est maintenant la sélection.</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge, object and background inside and outside it, then Flood and Matte.</source>
        <translation type="vanished">Peignez une bande inconnue le long du bord, l&apos;objet à l&apos;intérieur et l&apos;arrière-plan à l&apos;extérieur, puis « Remplir » et « Détourage ».</translation>
    </message>
    <message>
        <source>The document this matte was made for is closed.</source>
        <translation>Le document pour lequel ce détourage a été fait est fermé.</translation>
    </message>
    <message>
        <source>The document has changed size since the matting view opened.</source>
        <translation>La taille du document a changé depuis l&apos;ouverture de la vue de détourage.</translation>
    </message>
    <message>
        <source>There is no matte yet.</source>
        <translation>Il n&apos;y a pas encore de détourage.</translation>
    </message>
    <message>
        <source>Left object, Shift + left background, right unknown, middle erases</source>
        <translation>Gauche : objet, Maj + gauche : arrière-plan, droit : inconnu, milieu : efface</translation>
    </message>
    <message>
        <source>Half-width of a stroke; also the number of smoothing passes of Compute Matte</source>
        <translation>Demi-largeur du trait ; aussi le nombre de passes de lissage de « Calculer le détourage »</translation>
    </message>
    <message>
        <source>Compute Matte</source>
        <translation>Calculer le détourage</translation>
    </message>
    <message>
        <source>Turn the marks into a trimap and refine its unknown band into the matte</source>
        <translation>Transforme les marques en trimap et affine sa bande inconnue en détourage</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Rétablir</translation>
    </message>
    <message>
        <source>Show:</source>
        <translation>Afficher :</translation>
    </message>
    <message>
        <source>Paint an unknown band along the edge with the right button, the object inside it with the left and the background outside it with Shift + left, then Flood and Compute Matte.</source>
        <translation>Peignez avec le bouton droit une bande inconnue le long du bord, avec le gauche l&apos;objet à l&apos;intérieur et avec Maj + gauche l&apos;arrière-plan à l&apos;extérieur, puis « Remplir » et « Calculer le détourage ».</translation>
    </message>
    <message>
        <source>Wheel: zoom about the pointer; Space + drag: move; Ctrl+0: fit; Ctrl+1: 100 %</source>
        <translation>Molette : zoom autour du pointeur ; Espace + glisser : déplacer ; Ctrl+0 : ajuster ; Ctrl+1 : 100 %</translation>
    </message>
    <message>
        <source>Fit to Window</source>
        <translation>Ajuster à la fenêtre</translation>
    </message>
    <message>
        <source>100 %</source>
        <translation>100 %</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1 %</translation>
    </message>
</context>
<context>
    <name>VexaPluginLoader</name>
    <message>
        <source>The plug-in file %1 does not exist.</source>
        <translation>Le fichier du module externe %1 n&apos;existe pas.</translation>
    </message>
    <message>
        <source>The plug-in %1 cannot be loaded: %2</source>
        <translation>Impossible de charger le module externe %1 : %2</translation>
    </message>
    <message>
        <source>%1 is not a tools plug-in: it lacks %2.</source>
        <translation>%1 n&apos;est pas un module externe d&apos;outils : il manque %2.</translation>
    </message>
</context>
<context>
    <name>VexaSelection</name>
    <message>
        <source>Selection</source>
        <translation>Sélection</translation>
    </message>
    <message>
        <source>Deselect</source>
        <translation>Désélectionner</translation>
    </message>
    <message>
        <source>Invert Selection</source>
        <translation>Intervertir la sélection</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Tout sélectionner</translation>
    </message>
    <message>
        <source>Move Selection</source>
        <translation>Déplacer la sélection</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>needs OpenGL 2.1 or later, and no usable OpenGL context could be created on this display (%1)</source>
        <translation>nécessite OpenGL 2.1 ou ultérieur, et aucun contexte OpenGL utilisable n&apos;a pu être créé sur cet affichage (%1)</translation>
    </message>
</context>
</TS>
