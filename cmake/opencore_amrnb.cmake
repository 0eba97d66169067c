# kora_amrnb: the AMR narrow-band encoder of opencore-amr as a static library, for the handset's DLLs and for this
# machine alike, from the distribution's source package. Needs the package dpkg-dev.
if(TARGET kora_amrnb)
    return()
endif()
execute_process(COMMAND ${CMAKE_CURRENT_LIST_DIR}/../scripts/source_packages.sh opencore-amr
    OUTPUT_VARIABLE KORA_AMR_SOURCE OUTPUT_STRIP_TRAILING_WHITESPACE RESULT_VARIABLE result)
if(NOT result EQUAL 0)
    message(FATAL_ERROR "The AMR encoder's sources could not be made ready")
endif()
set(amr ${KORA_AMR_SOURCE}/opencore/codecs_v2/audio/gsm_amr)
# What the package's own build compiles for the encoder, but for other ways in and for what is there twice or not used.
set(KORA_AMR_ENCODER
    amrencode autocorr c1035pf c2_11pf c2_9pf c3_14pf c4_17pf c8_31pf calc_cor calc_en cbsearch cl_ltp cod_amr
    convolve cor_h cor_h_x cor_h_x2 corrwght_tab div_32 dtx_enc enc_lag3 enc_lag6 enc_output_format_tab ets_to_if2
    ets_to_wmf g_adapt g_code g_pitch gain_q hp_max inter_36 inter_36_tab l_abs l_comp l_extract l_negate lag_wind
    lag_wind_tab levinson lflg_upd lpc ol_ltp p_ol_wgh pitch_fr pitch_ol pre_big pre_proc prm2bits q_gain_c q_gain_p
    qgain475 qgain795 qua_gain s10_8pf set_sign sid_sync sp_enc spreproc spstproc ton_stab vad1)
set(KORA_AMR_COMMON
    add az_lsp bitno_tab bitreorder_tab c2_9pf_tab div_s extract_h extract_l gains_tbl gc_pred get_const_tbls gmed_n
    gray_tbl grid_tbl int_lpc inv_sqrt inv_sqrt_tbl l_deposit_h l_deposit_l l_shr_r log2 log2_norm log2_tbl lsfwt
    lsp lsp_az lsp_lsf lsp_lsf_tbl lsp_tab mult_r negate norm_l norm_s overflow_tbl ph_disp_tab pow2 pow2_tbl
    pred_lt q_plsf q_plsf_3 q_plsf_3_tbl q_plsf_5 q_plsf_5_tbl qua_gain_tbl reorder residu round set_zero shr shr_r
    sqrt_l sqrt_l_tbl sub syn_filt weight_a window_tab)
list(TRANSFORM KORA_AMR_ENCODER REPLACE "(.+)" "${amr}/amr_nb/enc/src/\\1.cpp")
list(TRANSFORM KORA_AMR_COMMON REPLACE "(.+)" "${amr}/amr_nb/common/src/\\1.cpp")
add_library(kora_amrnb STATIC ${KORA_AMR_SOURCE}/amrnb/wrapper.cpp ${KORA_AMR_ENCODER} ${KORA_AMR_COMMON})
target_compile_definitions(kora_amrnb PRIVATE DISABLE_AMRNB_DECODER)
target_include_directories(kora_amrnb PRIVATE ${KORA_AMR_SOURCE}/oscl ${amr}/common/dec/include
    ${amr}/amr_nb/enc/src ${amr}/amr_nb/enc/include ${amr}/amr_nb/common/include ${amr}/amr_nb/dec/src
    ${amr}/amr_nb/dec/include)
target_include_directories(kora_amrnb SYSTEM INTERFACE ${KORA_AMR_SOURCE}/amrnb)
# Somebody else's code, of before C++17: its warnings are not ours to act on.
set_target_properties(kora_amrnb PROPERTIES CXX_STANDARD 11)
target_compile_options(kora_amrnb PRIVATE -w)
if(KORA_SANITIZE)
    target_compile_options(kora_amrnb PRIVATE -fsanitize=address -O1)
else()
    # Its arithmetic shifts negative numbers, as that of its time does: undefined, and not for us to trap. Nobody steps
    # through it either, and sound is to be encoded as fast as it comes.
    target_compile_options(kora_amrnb PRIVATE $<$<CONFIG:Debug>:-fno-sanitize=all -O2>)
endif()
