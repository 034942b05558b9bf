-- Label formats: text with the variables $SIZE, $FLOW, $TOTALFLOW, $SECTIONLENGTH, $TOTALLENGTH and $MAXZ. A blank
-- isometric format means that of the plan. The isometric views of new water, gas and drain pipes show the flow.

INSERT INTO tblPipeLabel (ixPipeLabel, ixPipeType, ixLayerSystem, sLabelFormat, sLabelFormatIsometric)
VALUES
    (1, 1, 1, '$SIZE CW', '$SIZE CW $FLOW'),
    (2, 2, 1, '$SIZE HW', '$SIZE HW $FLOW'),
    (3, 3, 1, '$SIZE HWR', '$SIZE HWR $FLOW'),
    (4, 4, 1, '$SIZE SAN', '$SIZE SAN $FLOW'),
    (5, 5, 1, '$SIZE V', ' '),
    (6, 6, 1, '$SIZE ST', ' '),
    (7, 7, 1, '$SIZE G', '$SIZE G $FLOW'),
    (8, 1, 2, '(E) $SIZE CW', ' '),
    (9, 2, 2, '(E) $SIZE HW', ' '),
    (10, 3, 2, '(E) $SIZE HWR', ' '),
    (11, 4, 2, '(E) $SIZE SAN', ' '),
    (12, 5, 2, '(E) $SIZE V', ' '),
    (13, 6, 2, '(E) $SIZE ST', ' '),
    (14, 7, 2, '(E) $SIZE G', ' '),
    (15, 1, 3, '(D) $SIZE CW', ' '),
    (16, 2, 3, '(D) $SIZE HW', ' '),
    (17, 3, 3, '(D) $SIZE HWR', ' '),
    (18, 4, 3, '(D) $SIZE SAN', ' '),
    (19, 5, 3, '(D) $SIZE V', ' '),
    (20, 6, 3, '(D) $SIZE ST', ' '),
    (21, 7, 3, '(D) $SIZE G', ' ');
