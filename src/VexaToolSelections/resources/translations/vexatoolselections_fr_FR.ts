<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr_FR">
<context>
    <name>QuickSelectGLWidget</name>
    <message>
        <source>Failed to compile: &apos;TrimapShader.fp&apos;
</source>
        <translation>Échec de la compilation : &apos;TrimapShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;ExpandShader.fp&apos;
</source>
        <translation>Échec de la compilation : &apos;ExpandShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;FastFillShader.fp&apos;
</source>
        <translation>Échec de la compilation : &apos;FastFillShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;RobustShader.fp&apos;
</source>
        <translation>Échec de la compilation : &apos;RobustShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;closedShader.fp&apos;
</source>
        <translation>Échec de la compilation : &apos;closedShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to compile: &apos;resultShader.fp&apos;
</source>
        <translation>Échec de la compilation : &apos;resultShader.fp&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;TrimapShader&apos;
</source>
        <translation>Échec de l&apos;édition de liens de &apos;TrimapShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;ExpandShader&apos;
</source>
        <translation>Échec de l&apos;édition de liens de &apos;ExpandShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;FastFillShader&apos;
</source>
        <translation>Échec de l&apos;édition de liens de &apos;FastFillShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;RobustShader&apos;
</source>
        <translation>Échec de l&apos;édition de liens de &apos;RobustShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;closedShader&apos;
</source>
        <translation>Échec de l&apos;édition de liens de &apos;closedShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to link &apos;resultShader&apos;
</source>
        <translation>Échec de l&apos;édition de liens de &apos;resultShader&apos;
</translation>
    </message>
    <message>
        <source>Failed to open file:
&apos;%1&apos;.</source>
        <translation>Impossible d&apos;ouvrir le fichier :
&apos;%1&apos;.</translation>
    </message>
    <message>
        <source>The matting view needs OpenGL 2.1; this driver offers only %1 %2.%3.</source>
        <translation>La vue de détourage nécessite OpenGL 2.1 ; ce pilote ne propose que %1 %2.%3.</translation>
    </message>
    <message>
        <source>The image is %1 x %2 pixels, larger than this OpenGL&apos;s largest texture (%3 pixels a side).</source>
        <translation>L’image mesure %1 x %2 pixels, plus que la plus grande texture de cet OpenGL (%3 pixels de côté).</translation>
    </message>
    <message>
        <source>This OpenGL cannot render into a %1 x %2 texture.</source>
        <translation>Cet OpenGL ne peut pas dessiner dans une texture de %1 x %2.</translation>
    </message>
</context>
<context>
    <name>Thread</name>
    <message>
        <source>Initializing ..</source>
        <translation>Initialisation ..</translation>
    </message>
    <message>
        <source>Initialize done.</source>
        <translation>Initialisation terminée.</translation>
    </message>
    <message>
        <source>Marking..</source>
        <translation>Marquage..</translation>
    </message>
    <message>
        <source>Mark done</source>
        <translation>Marquage terminé</translation>
    </message>
    <message>
        <source>Please mark foreground objects.</source>
        <translation>Veuillez marquer les objets au premier plan.</translation>
    </message>
    <message>
        <source>Please mark background regions.</source>
        <translation>Veuillez marquer des zones de l&apos;arrière-plan.</translation>
    </message>
    <message>
        <source>Alpha Extracting ..</source>
        <translation>Extraction de l&apos;alpha ..</translation>
    </message>
    <message>
        <source>Alpha Extract done ..</source>
        <translation>Extraction de l&apos;alpha terminée ..</translation>
    </message>
    <message>
        <source>Refining Edges ..</source>
        <translation>Affinage des contours ..</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygon</name>
    <message>
        <source>Alt+Z to delete/recover latest point, double click to close the path</source>
        <translation>Alt+Z supprime ou rétablit le dernier point ; double-cliquez pour fermer le tracé</translation>
    </message>
</context>
<context>
    <name>VexaToolLassoPolygonWidgetClass</name>
    <message>
        <source>Polygon Lasso Window</source>
        <translation>Lasso polygonal</translation>
    </message>
    <message>
        <source>Control Points:</source>
        <translation>Points de contrôle :</translation>
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
        <source>Clear</source>
        <translation>Effacer</translation>
    </message>
</context>
<context>
    <name>VexaToolMagicSelectWidgetClass</name>
    <message>
        <source>VexaToolMagicSelectWidget</source>
        <translatorcomment>notr: object name of the panel, shown nowhere</translatorcomment>
        <translation>VexaToolMagicSelectWidget</translation>
    </message>
    <message>
        <source>Threshold:</source>
        <translation>Seuil :</translation>
    </message>
    <message>
        <source>32</source>
        <translatorcomment>notr: initial value of the threshold field</translatorcomment>
        <translation>32</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelect</name>
    <message>
        <source>Quick Select</source>
        <translation>Sélection rapide</translation>
    </message>
    <message>
        <source>Applying...</source>
        <translation>Application...</translation>
    </message>
</context>
<context>
    <name>VexaToolQuickSelectWidget</name>
    <message>
        <source>Quick Select Tool</source>
        <translation>Outil Sélection rapide</translation>
    </message>
    <message>
        <source>Step1:Mark Fore/Background</source>
        <translation>Étape 1 : Marquer premier plan/fond</translation>
    </message>
    <message>
        <source>Mark Foreground</source>
        <translation>Marquer le premier plan</translation>
    </message>
    <message>
        <source>Mark Background</source>
        <translation>Marquer le fond</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Step2:Modify Boundary</source>
        <translation>Étape 2 : Modifier le bord</translation>
    </message>
    <message>
        <source>Mark Boundary</source>
        <translation>Marquer le bord</translation>
    </message>
    <message>
        <source>Clear Marks</source>
        <translation type="vanished">Effacer les marques</translation>
    </message>
    <message>
        <source>Alpha Extract</source>
        <translation>Extraire l&apos;alpha</translation>
    </message>
    <message>
        <source>Pen settings</source>
        <translation>Réglages du pinceau</translation>
    </message>
    <message>
        <source>Mark Radius: </source>
        <translation>Rayon de marquage : </translation>
    </message>
    <message>
        <source>Sensitivity: </source>
        <translation>Sensibilité : </translation>
    </message>
    <message>
        <source>View Settings</source>
        <translation>Affichage</translation>
    </message>
    <message>
        <source>Show User Marks</source>
        <translation>Afficher les marques</translation>
    </message>
    <message>
        <source>View Image</source>
        <translation>Afficher l&apos;image</translation>
    </message>
    <message>
        <source>View Matte</source>
        <translation>Afficher le détourage</translation>
    </message>
    <message>
        <source>View Alpha</source>
        <translation>Afficher l&apos;alpha</translation>
    </message>
    <message>
        <source>View Nodes</source>
        <translation>Afficher les nœuds</translation>
    </message>
    <message>
        <source>Reset</source>
        <translation>Réinitialiser</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Initializing...</source>
        <translation>Initialisation...</translation>
    </message>
    <message>
        <source>Save Image</source>
        <translation>Enregistrer l&apos;image</translation>
    </message>
    <message>
        <source>Image Files (*.bmp *.gif *.jpg *.jpeg *.png)</source>
        <translation>Fichiers image (*.bmp *.gif *.jpg *.jpeg *.png)</translation>
    </message>
    <message>
        <source>The document could not be rendered: there is nothing to select from.</source>
        <translation>Le document n’a pas pu être rendu : il n’y a rien à sélectionner.</translation>
    </message>
    <message>
        <source>Refine Edges</source>
        <translation>Affiner les contours</translation>
    </message>
    <message>
        <source>Paint foreground marks (F)</source>
        <translation>Peindre des marques de premier plan (F)</translation>
    </message>
    <message>
        <source>Paint background marks (B)</source>
        <translation>Peindre des marques d&apos;arrière-plan (B)</translation>
    </message>
    <message>
        <source>Paint the boundary band by hand (M)</source>
        <translation>Peindre à la main la bande de bord (M)</translation>
    </message>
    <message>
        <source>Erase the marks you paint over (E)</source>
        <translation>Effacer les marques sur lesquelles vous peignez (E)</translation>
    </message>
    <message>
        <source>Cut the object out along the marks (P)</source>
        <translation>Découper l&apos;objet selon les marques (P)</translation>
    </message>
    <message>
        <source>Turn the boundary band into soft edges (A)</source>
        <translation>Transformer la bande de bord en contours doux (A)</translation>
    </message>
    <message>
        <source>Erase Marks</source>
        <translation>Gommer les marques</translation>
    </message>
</context>
<context>
    <name>VexaToolRectangularMarqueeWidgetClass</name>
    <message>
        <source>VexaToolRectangularMarqueeWidget</source>
        <translatorcomment>notr: object name of the panel, shown nowhere</translatorcomment>
        <translation>VexaToolRectangularMarqueeWidget</translation>
    </message>
    <message>
        <source>X:</source>
        <translation>X :</translation>
    </message>
    <message>
        <source>Y:</source>
        <translation>Y :</translation>
    </message>
    <message>
        <source>W:</source>
        <translation>L :</translation>
    </message>
    <message>
        <source>H:</source>
        <translation>H :</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionColorRangeWidgetClass</name>
    <message>
        <source>Color Range</source>
        <translation>Plage de couleurs</translation>
    </message>
    <message>
        <source>Select Color</source>
        <translation>Sélection de la couleur</translation>
    </message>
    <message>
        <source>From:</source>
        <translation>Source :</translation>
    </message>
    <message>
        <source>Color Picker</source>
        <translation>Pipette</translation>
    </message>
    <message>
        <source>Mode:</source>
        <translation>Mode :</translation>
    </message>
    <message>
        <source>Tolerance:</source>
        <translation>Tolérance :</translation>
    </message>
    <message>
        <source>Quick View:</source>
        <translation>Aperçu :</translation>
    </message>
    <message>
        <source>Selection</source>
        <translation>Sélection</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidget</name>
    <message>
        <source>Drag with the right mouse button to subtract in any mode</source>
        <translation>Faites glisser avec le bouton droit de la souris pour soustraire dans tous les modes</translation>
    </message>
</context>
<context>
    <name>VexaToolSelectionWidgetClass</name>
    <message>
        <source>VexaToolSelectionWidget</source>
        <translatorcomment>notr: object name of the panel, shown nowhere</translatorcomment>
        <translation>VexaToolSelectionWidget</translation>
    </message>
    <message>
        <source>New</source>
        <translation>Nouvelle sélection</translation>
    </message>
    <message>
        <source>selection</source>
        <translatorcomment>notr: style-sheet hook (dynamic property class) of the mode buttons</translatorcomment>
        <translation>selection</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Ajouter à la sélection</translation>
    </message>
    <message>
        <source>Substract</source>
        <translation>Soustraire de la sélection</translation>
    </message>
    <message>
        <source>Intersect</source>
        <translation>Intersection avec la sélection</translation>
    </message>
    <message>
        <source>Feather:</source>
        <translation>Contour progressif :</translation>
    </message>
    <message>
        <source>px</source>
        <translation>px</translation>
    </message>
</context>
</TS>
